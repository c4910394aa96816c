#include "frame/location.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "frame/log.h"
#include "frame/narrow.h"
#include "frame/path.h"

namespace {

constexpr char kInstallationFile[] = "/etc/zuk/zuk.ini";
constexpr std::string_view kHomeKey = "ZUK_HomeDirectory =";
constexpr int kLineBuffer = 1024;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

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
    if (log != nullptr) log->traceMAX("ZUKLocation::ZUKLocation()", "ZUK location [%S]", location.c_str());
}

std::wstring ZUKlocation::getLocation() {
    return location;
}

std::wstring ZUKlocation::getSystemLocation(const char* /*exploiter*/) {
    constexpr char kHere[] = "ZUKLocation::getSystemLocation()";
    if (log != nullptr) log->traceMAX(kHere, "Checking ZUK location..");

    std::wstring home;
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(kInstallationFile, "re"));
    if (log != nullptr) log->traceMAX(kHere, "Opening a file [%s]", kInstallationFile);
    if (!file) {
        if (log != nullptr) {
            log->traceMIN("ZUKLocation::getSystemLocation", "Can't open file [%s]", kInstallationFile);
        }
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
