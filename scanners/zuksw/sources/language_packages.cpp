#include "scanners/zuksw/sources/language_packages.h"

#include <algorithm>
#include <utility>

#include "scanners/zuksw/evaluation/machine.h"

namespace zuksw {
namespace {

constexpr std::uint64_t kMaxFile = std::uint64_t{16} << 20U;

}  // namespace

const std::vector<LanguageManager>& languageManagers() {
    static const std::vector<LanguageManager> kManagers = {
        {"pip", pipQuery, readPip},
        {"npm", npmQuery, readNpm},
        {"gem", gemQuery, readGem},
        {"jar", jarQuery, readJar},
    };
    return kManagers;
}

const LanguageManager* findLanguageManager(std::string_view name) {
    const auto& managers = languageManagers();
    const auto found =
        std::find_if(managers.begin(), managers.end(), [&](const auto& m) { return m.name == name; });
    return found == managers.end() ? nullptr : &*found;
}

FileQuery queryByPath(std::string_view glob) {
    FileQuery query;
    std::string error;
    query.key = "packages\n" + std::string(glob);
    query.path = Glob::parsePath(glob, &error);
    for (const GlobSteps& steps : query.path->alternatives()) query.names.push_back(steps.back().name);
    return query;
}

void takeFirst(const Values& names, const Values& versions, const TakePackage& take) {
    if (names.found.empty() || versions.found.empty()) return;
    Package package;
    package.name = names.found.front();
    package.version = package.upstream = versions.found.front();
    take(std::move(package), {});
}

std::string readText(const FileObject& file, Machine& machine, Causes* causes) {
    if (file.size() > kMaxFile) {
        *causes |= toCauses(Cause::kTooLarge);
        return {};
    }
    const Causes refused = machine.takeBytes(file.size());
    const Opened opened = refused == 0 ? file.open(machine) : Opened{nullptr, refused};
    *causes |= opened.causes;
    if (!opened.contents) return {};
    std::string text(opened.contents->bytes());
    if (opened.contents->changed()) *causes |= toCauses(Cause::kChanged);
    return text;
}

}  // namespace zuksw
