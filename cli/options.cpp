#include "cli/options.h"

#include "cli/failure.h"

namespace {

struct Flag {
    const char* name;
    const char* shortName;  // null: none
    bool Options::*member;
};

constexpr Flag kFlags[] = {
    {"--help", "-h", &Options::help},
    {"--json", nullptr, &Options::json},
    {"--verbose", "-v", &Options::verbose},
};
const std::string kHome = "--home";

bool setFlag(const std::string& argument, Options& options) {
    for (const Flag& flag : kFlags) {
        if (argument == flag.name || (flag.shortName != nullptr && argument == flag.shortName)) {
            options.*flag.member = true;
            return true;
        }
    }
    return false;
}

void setHome(const std::string& directory, Options& options) {
    if (directory.empty()) throw Failure(kWrongUsage, "--home wants a directory: --home DIR");
    options.home = directory;
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == "--") {
            options.operands.insert(options.operands.end(), argument + 1, arguments.end());
            break;
        }
        if (argument->size() < 2 || argument->front() != '-') {
            options.operands.push_back(*argument);
        } else if (*argument == kHome) {
            const bool given = argument + 1 != arguments.end();
            setHome(given ? *++argument : std::string(), options);
        } else if (argument->compare(0, kHome.size() + 1, kHome + "=") == 0) {
            setHome(argument->substr(kHome.size() + 1), options);
        } else if (!setFlag(*argument, options)) {
            throw Failure(kWrongUsage, "unknown option '" + *argument + "': --help lists the options");
        }
    }
    return options;
}
