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
const ValueOption kHome = {"--home", "DIR",
                           [](const std::string& value, Options& options) { options.home = value; }};

bool setFlag(const std::string& argument, Options& options) {
    for (const Flag& flag : kFlags) {
        if (argument == flag.name || (flag.shortName != nullptr && argument == flag.shortName)) {
            options.*flag.member = true;
            return true;
        }
    }
    return false;
}

// The option that the argument names, with or without "=VALUE"; null when it is none of them.
const ValueOption* findValueOption(const std::string& argument, const std::vector<ValueOption>& own) {
    const std::string name = argument.substr(0, argument.find('='));
    if (name == kHome.name) return &kHome;
    for (const ValueOption& option : own) {
        if (name == option.name) return &option;
    }
    return nullptr;
}

void setValue(const ValueOption& option, const std::string& value, Options& options) {
    if (value.empty()) {
        throw Failure(kWrongUsage,
                      std::string(option.name) + " wants a value: " + option.name + " " + option.value);
    }
    option.take(value, options);
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments, const std::vector<ValueOption>& own) {
    Options options;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (*argument == "--") {
            options.operands.insert(options.operands.end(), argument + 1, arguments.end());
            break;
        }
        if (argument->size() < 2 || argument->front() != '-') {
            options.operands.push_back(*argument);
        } else if (const ValueOption* option = findValueOption(*argument, own)) {
            const std::size_t sign = argument->find('=');
            const bool inNext = sign == std::string::npos && argument + 1 != arguments.end();
            const std::string inSame = sign == std::string::npos ? "" : argument->substr(sign + 1);
            setValue(*option, inNext ? *++argument : inSame, options);
        } else if (!setFlag(*argument, options)) {
            throw Failure(kWrongUsage, "unknown option '" + *argument + "': --help lists the options");
        }
    }
    return options;
}
