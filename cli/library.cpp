#include "cli/library.h"

#include <cstdio>

#include "cli/failure.h"
#include "cli/text.h"

namespace {

constexpr int kNoTemporaryDirectory = 6;

// The directory as the library takes it; quoted where it has blanks, since it becomes part of a command line
// that is split at them.
std::wstring homeArgument(const std::string& directory) {
    const std::wstring wide = bytesAsWide(directory);
    return wide.find_first_of(L" \t") == std::wstring::npos ? wide : L'"' + wide + L'"';
}

}  // namespace

void printMessage(int, int, void*, const char* location, const char* text) {
    const std::string line = toUtf8(printable(fromLocale(text)));
    std::fprintf(stderr, "zuk: %s: %s\n", location, line.c_str());
}

Library::Library(std::optional<std::string> home, bool verbose)
    : home_(std::move(home)), log_(verbose ? printMessage : nullptr) {
    const std::wstring argument = homeArgument(home_.value_or(""));
    ZUKCtx* context = nullptr;
    const int status = ZUK_init("zuk", log_, nullptr, nullptr, home_ ? argument.c_str() : nullptr, &context);
    if (status == kNoTemporaryDirectory) {
        throw Failure(kScanFailed, withStatus("no private temporary directory could be created: set the "
                                              "environment variable TEMP to a directory you can write to",
                                              status));
    }
    require(status, "ZUK_init");
    context_.reset(context);
}

std::string Library::homeInWords() const {
    return home_ ? *home_
                 : "the installation that /etc/zuk/zuk.ini names (there is none beside this program)";
}

std::string withStatus(const std::string& message, int status) {
    return message + " (status " + std::to_string(status) + ")";
}

void require(int status, const char* call) {
    if (status != 0) throw Failure(kScanFailed, withStatus(std::string(call) + " failed", status));
}

std::string scannerFailure(const std::string& what, const std::string& program, int exitStatus,
                           const Library& library) {
    if (exitStatus < 0) {
        return "the " + what + " could not be started from " + library.homeInWords() +
               ": name the directory that holds " + program + " with --home DIR";
    }
    const std::string end = exitStatus > 128 ? "was ended by signal " + std::to_string(exitStatus - 128)
                                             : "ended with exit status " + std::to_string(exitStatus);
    return "the " + what + " of " + library.homeInWords() + " " + end + ": -v shows its messages";
}
