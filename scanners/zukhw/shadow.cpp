#include "scanners/zukhw/shadow.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kPath[] = "etc/shadow";

}  // namespace

PasswordState passwordState(std::string_view field) {
    if (field.empty()) return PasswordState::Empty;
    if (field.front() == '!') return PasswordState::Locked;
    return field.front() == '*' ? PasswordState::None : PasswordState::Set;
}

const char* passwordStateName(PasswordState state) {
    static constexpr const char* kNames[] = {"Set", "Locked", "Empty", "None"};
    return kNames[static_cast<int>(state)];
}

// "name:password:changed:minimum:maximum:warning:inactive:expires:"
Shadow::Shadow(Machine& machine) {
    constexpr std::size_t kFields = 8;
    const std::string text = machine.read(kPath, Machine::kTable).value_or("");
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = split(line, ':');
        if (fields.size() < kFields || fields[0].empty()) {
            machine.sources().malformed(kPath, static_cast<std::size_t>(line.data() - text.data()));
            continue;
        }
        entries_.emplace(fields[0], Entry{passwordState(fields[1]), parseSigned(fields[2]),
                                          parseSigned(fields[4]), parseSigned(fields[7])});
    }
}

const Shadow::Entry* Shadow::find(const std::string& user) const {
    const auto found = entries_.find(user);
    return found == entries_.end() ? nullptr : &found->second;
}
