#include "scanners/shared/packages/apk.h"

#include <string>
#include <utility>

#include "scanners/shared/packages/text.h"

namespace {

// A line "X:value"; false when it is none.
bool splitLine(std::string_view line, char* letter, std::string_view* value) {
    if (line.size() < 2 || line[1] != ':') return false;
    *letter = line[0];
    *value = line.substr(2);
    return true;
}

void setField(Package& package, char letter, std::string_view value) {
    switch (letter) {
        case 'P':
            package.name = value;
            break;
        case 'V':
            setVersion(package, value);
            break;
        case 'A':
            package.architecture = value;
            break;
        case 'T':
            package.summary = value;
            break;
        case 'L':
            package.license = value;
            break;
        case 'o':
            package.source = value;
            break;
        case 'm':
            package.maintainer = value;
            break;
        case 'I':
            package.installedBytes = parseUnsigned(value);
            break;
        default:
            break;  // dependencies, checksums, files
    }
}

}  // namespace

PackageList parseApkInstalled(std::string_view text) {
    PackageList list;
    const std::string_view whole = text;
    const bool cut = !text.empty() && text.back() != '\n';
    while (!text.empty()) {
        const std::size_t begin = whole.size() - text.size();
        Package package;
        bool good = true;
        bool any = false;
        for (std::string_view line = takeLine(text); !line.empty(); line = takeLine(text)) {
            char letter = 0;
            std::string_view value;
            any = true;
            good = splitLine(line, &letter, &value) && good;
            if (good) setField(package, letter, value);
        }
        if (!any) continue;
        if (!good || package.name.empty() || package.version.empty() || (cut && text.empty())) {
            list.skipBroken(begin);
            continue;
        }
        package.manager = "apk";
        list.packages.push_back(std::move(package));
    }
    return list;
}

void forEachApkPath(std::string_view text,
                    const std::function<void(const std::string&, std::string_view)>& owned) {
    std::string_view package;
    std::string_view folder;
    while (!text.empty()) {
        char letter = 0;
        std::string_view value;
        if (!splitLine(takeLine(text), &letter, &value)) continue;
        if (letter == 'P') package = value;
        if (letter == 'F') folder = value;
        if (letter != 'R') continue;
        std::string path(folder);
        if (!path.empty()) path += '/';
        owned(path.append(value), package);
    }
}
