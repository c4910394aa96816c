#include "cli/catalogue.h"

#include <algorithm>
#include <filesystem>

#include "cli/failure.h"
#include "cli/home.h"

namespace fs = std::filesystem;

namespace {

bool isSignatureFile(const fs::path& path) {
    return path.extension() == ".xml" && path.filename().native().front() != '.';
}

}  // namespace

std::vector<std::string> catalogueIn(const std::string& directory) {
    std::vector<std::string> files;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        if (isSignatureFile(entry->path())) files.push_back(entry->path().string());
    }
    if (error) throw Failure(kWrongUsage, directory + ": the catalogue cannot be listed: " + error.message());
    if (files.empty()) throw Failure(kWrongUsage, directory + ": there is no signature file *.xml in it");
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> shippedCatalogue() {
    const fs::path program = programDirectory();
    for (const fs::path& directory :
         {program / "signatures", (program / ZUK_CATALOGUE_FROM_COMMAND).lexically_normal()}) {
        std::error_code ignored;
        if (fs::is_directory(directory, ignored)) return catalogueIn(directory.string());
    }
    throw Failure(
        kScanFailed,
        "the catalogue of signatures that belongs to this program is missing: name a directory with "
        "--catalogue DIR, or signature files");
}
