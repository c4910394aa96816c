#include "scanners/zukhw/udev_database.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kDirectory[] = "run/udev/data";
constexpr std::string_view kProperty = "E:";
constexpr std::string_view kEscape = "\\x";

UdevDatabase::Properties parseEntry(std::string_view text) {
    UdevDatabase::Properties properties;
    for (std::string_view line : lines(text)) {
        const std::size_t equals = line.find('=');
        if (!startsWith(line, kProperty) || equals == std::string_view::npos) continue;
        const std::string_view key = line.substr(kProperty.size(), equals - kProperty.size());
        properties.emplace(key, line.substr(equals + 1));
    }
    return properties;
}

}  // namespace

UdevDatabase::UdevDatabase(Machine& machine) : machine_(machine), present_(machine.exists(kDirectory)) {}

const UdevDatabase::Properties& UdevDatabase::of(const std::string& device) {
    static const Properties kNone;
    if (!present_) return kNone;
    const auto known = known_.find(device);
    if (known != known_.end()) return known->second;
    const std::string text = machine_.read(std::string(kDirectory) + '/' + device).value_or("");
    return known_.emplace(device, parseEntry(text)).first->second;
}

std::string_view UdevDatabase::property(const std::string& device, std::string_view key) {
    const Properties& properties = of(device);
    const auto found = properties.find(key);
    return found == properties.end() ? std::string_view() : std::string_view(found->second);
}

std::string decodeUdevEscapes(std::string_view text) {
    constexpr std::size_t kLength = 4;
    std::string decoded;
    while (!text.empty()) {
        const bool escaped = text.size() >= kLength && startsWith(text, kEscape);
        const auto code = escaped ? parseHex(text.substr(2, 2)) : std::nullopt;
        decoded += code ? static_cast<char>(*code) : text.front();
        text.remove_prefix(code ? kLength : 1);
    }
    return decoded;
}
