#include "scanners/zuksw/walk/path_set.h"

namespace zuksw {

PathSet::PathSet(const std::vector<std::string>& globs) {
    std::string error;
    for (const std::string& text : globs) {
        const auto alternatives = expandBraces(text, &error);
        if (!alternatives) continue;
        for (const std::string& alternative : *alternatives) {
            std::optional<Glob> glob = Glob::parsePath(alternative, &error);
            if (!glob) continue;
            const GlobSteps& steps = glob->alternatives().front();
            if (isLiteral(steps)) {
                std::string path;
                for (const GlobStep& step : steps) path += "/" + step.name.prefix();
                paths_.insert(std::move(path));
            } else if (steps.size() == 2 && steps[0].anyDirectories && steps[1].name.isLiteral()) {
                names_.insert(steps[1].name.prefix());
            } else {
                others_.push_back(*std::move(glob));
            }
        }
    }
}

bool PathSet::contains(std::string_view path) const {
    if (!paths_.empty() && paths_.count(std::string(path)) != 0) return true;
    if (!names_.empty() && names_.count(std::string(path.substr(path.rfind('/') + 1))) != 0) return true;
    if (others_.empty()) return false;
    path.remove_prefix(1);
    for (const Glob& glob : others_) {
        if (glob.matches(path)) return true;
    }
    return false;
}

}  // namespace zuksw
