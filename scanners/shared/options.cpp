#include "scanners/shared/options.h"

#include <algorithm>
#include <set>

namespace {

const OptionSpec* findOption(const std::string& name, const std::vector<OptionSpec>& options) {
    const auto matches = [&](const OptionSpec& option) {
        return name == option.longName || (option.shortName != nullptr && name == option.shortName);
    };
    const auto found = std::find_if(options.begin(), options.end(), matches);
    return found == options.end() ? nullptr : &*found;
}

bool setFlag(const std::string& word, const std::vector<FlagSpec>& flags) {
    for (const FlagSpec& flag : flags) {
        if (word != flag.longName) continue;
        *flag.value = true;
        return true;
    }
    return false;
}

}  // namespace

std::string parseOptions(const std::vector<std::string>& words, const std::vector<OptionSpec>& options,
                         const std::vector<FlagSpec>& flags) {
    std::set<const OptionSpec*> seen;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (setFlag(words[i], flags)) continue;
        const bool isLong = words[i].compare(0, 2, "--") == 0;
        const std::size_t equals = isLong ? words[i].find('=') : std::string::npos;
        const std::string name = words[i].substr(0, equals);
        const OptionSpec* option = findOption(name, options);
        if (option == nullptr) return "unknown argument '" + words[i] + "'";
        if (!seen.insert(option).second) return "'" + name + "' is given twice";
        if (equals != std::string::npos) {
            *option->value = words[i].substr(equals + 1);
        } else if (++i < words.size()) {
            *option->value = words[i];
        } else {
            return "'" + name + "' needs a value after it";
        }
    }
    return "";
}
