#include "frame/location.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include "frame/file.h"
#include "frame/narrow.h"
#include "frame/path.h"
#include "frame/trace.h"

namespace {

constexpr char kInstallationFile[] = "/etc/zuk/zuk.ini";
constexpr std::string_view kHomeKey = "ZUK_HomeDirectory =";
constexpr int kLineBuffer = 1024;

// True when `line` holds the home directory; then `home` is the directory of the executables below it.
bool parseHome(std::string_view line, std::wstring& home) {
    if (line.substr(0, kHomeKey.size()) != kHomeKey) return false;
    line.remove_prefix(kHomeKey.size());
    if (!line.empty() && line.front() == ' ') line.remove_prefix(1);
    home = widen(std::string(line) + "/bin");
    return true;
}

}  // namespace

ZUKlocation::ZUKlocation(ZUKlog* logger, const char* exploiter, const wchar_t* homeDir) : log(logger) {
    const std::wstring system = getSystemLocation(exploiter);
    if (homeDir != nullptr) {
        std::wstring given(homeDir);
        normalizeDir(given);
        if (given != system && log != nullptr) {
            log->traceMID("ZUKLocation::ZUKLocation()",
                          "Default location [%S] is different that specified one [%S]", system.c_str(),
                          homeDir);
        }
        location = given;
    } else {
        location = system;
    }
    normalizeDir(location);
    traceMAX(log, "ZUKLocation::ZUKLocation()", "ZUK location [%S]", location.c_str());
}

ZUKlocation::~ZUKlocation() = default;

std::wstring ZUKlocation::getLocation() {
    return location;
}

std::wstring ZUKlocation::getSystemLocation(const char* /*exploiter*/) {
    constexpr char kHere[] = "ZUKLocation::getSystemLocation()";
    traceMAX(log, kHere, "Checking ZUK location..");

    std::wstring home;
    const File file(std::fopen(kInstallationFile, "re"));
    traceMAX(log, kHere, "Opening a file [%s]", kInstallationFile);
    if (!file) {
        traceMIN(log, "ZUKLocation::getSystemLocation", "Can't open file [%s]", kInstallationFile);
        return home;
    }

    // A longer line comes in pieces, each taken as a line of its own; of several keys the last one wins.
    char buffer[kLineBuffer];
    while (std::fgets(buffer, kLineBuffer, file.get()) != nullptr) {
        std::string_view line(buffer);
        if (!line.empty() && line.back() == '\n') line.remove_suffix(1);
        parseHome(line, home);
    }
    return home;
}

void ZUKlocation::normalizeDir(std::wstring& dir) {
    normalizePath(dir);
}

std::wstring ZUKlocation::getDirectorySeparator() {
    return L"/";
}
