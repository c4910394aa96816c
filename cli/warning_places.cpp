#include "cli/warning_places.h"

#include <algorithm>
#include <cwchar>
#include <filesystem>

#include "cli/text.h"

namespace {

// The length of "line 3, column 7: " at the begin of a text; 0 when it begins otherwise.
std::size_t placeLength(const std::wstring& text) {
    int length = 0;
    std::swscanf(text.c_str(), L"line %*u, column %*u: %n", &length);
    return static_cast<std::size_t>(length);
}

std::wstring fileOf(const std::wstring& guid, const std::vector<SignatureFile>& files) {
    const auto has = [&guid](const SignatureFile& file) { return file.names.count(guid) != 0; };
    const auto found = std::find_if(files.begin(), files.end(), has);
    if (found == files.end()) return {};
    return fromLocale(std::filesystem::path(found->path).filename().c_str()) + L": ";
}

}  // namespace

void nameFilesForLines(std::vector<Warning>& warnings, const std::vector<SignatureFile>& files) {
    if (files.size() < 2) return;
    for (Warning& warning : warnings) {
        const std::size_t length = placeLength(warning.text);
        if (length > 0) warning.text.replace(0, length, fileOf(warning.guid, files));
    }
}
