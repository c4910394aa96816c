#include "scanners/zukhw/screen_saver.h"

#include <algorithm>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::uint64_t kMinute = 60;
constexpr std::uint64_t kHour = 60 * kMinute;
constexpr std::uint64_t kDay = 24 * kHour;
constexpr std::uint64_t kLongest = 100 * 365 * kDay;  // what is longer is not meant

std::optional<bool> parseSwitch(std::string_view text) {
    const std::string word = toLower(text);
    if (word == "true" || word == "yes" || word == "on" || word == "1") return true;
    if (word == "false" || word == "no" || word == "off" || word == "0") return false;
    return std::nullopt;
}

// The value of a key in one section of an INI file; the last one counts.
std::optional<std::string_view> iniValue(std::string_view text, std::string_view section,
                                         std::string_view key) {
    std::optional<std::string_view> found;
    std::string_view current;
    for (const std::string_view whole : lines(text)) {
        const std::string_view line = trim(whole);
        if (startsWith(line, "[")) current = line;
        const std::size_t equals = line.find('=');
        if (current != section || equals == std::string_view::npos) continue;
        if (trim(line.substr(0, equals)) == key) found = trim(line.substr(equals + 1));
    }
    return found;
}

std::uint64_t unitOf(std::string_view name) {
    if (name.empty() || name == "s" || name == "sec" || name == "second" || name == "seconds") return 1;
    if (name == "m" || name == "min" || name == "minute" || name == "minutes") return kMinute;
    if (name == "h" || name == "hr" || name == "hour" || name == "hours") return kHour;
    return name == "d" || name == "day" || name == "days" ? kDay : 0;
}

}  // namespace

std::optional<std::uint64_t> parseClockTime(std::string_view text) {
    std::uint64_t seconds = 0;
    const std::vector<std::string_view> parts = split(trim(text), ':');
    if (parts.size() != 3) return std::nullopt;
    for (const std::string_view part : parts) {
        const auto number = parseDecimal(part);
        if (!number || *number > kLongest) return std::nullopt;
        seconds = seconds * 60 + *number;
    }
    return seconds;
}

std::optional<std::uint64_t> parseTimeSpan(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789";
    std::uint64_t seconds = 0;
    text = trim(text);
    if (text.empty()) return std::nullopt;
    while (!text.empty()) {
        const std::size_t digits = std::min(text.find_first_not_of(kDigits), text.size());
        const auto number = parseDecimal(text.substr(0, digits));
        text.remove_prefix(digits);
        const std::size_t end = std::min(text.find_first_of(kDigits), text.size());
        const std::uint64_t unit = unitOf(trim(text.substr(0, end)));
        text.remove_prefix(end);
        if (!number || unit == 0 || *number > kLongest / unit) return std::nullopt;
        seconds += *number * unit;
        if (seconds > kLongest) return std::nullopt;
    }
    return seconds;
}

ScreenSaverSettings parseXScreenSaver(std::string_view text) {
    const auto value = [&](const char* key) { return findValue(text, key, ':').value_or(""); };
    ScreenSaverSettings settings;
    settings.program = "XScreenSaver";
    if (!value("mode").empty()) settings.enabled = value("mode") != "off";
    settings.timeoutSeconds = parseClockTime(value("timeout"));
    settings.lockEnabled = parseSwitch(value("lock"));
    settings.lockDelaySeconds = parseClockTime(value("lockTimeout"));
    return settings;
}

ScreenSaverSettings parseKScreenLocker(std::string_view text) {
    const auto value = [&](const char* key) { return iniValue(text, "[Daemon]", key).value_or(""); };
    ScreenSaverSettings settings;
    settings.program = "KScreenLocker";
    settings.enabled = parseSwitch(value("Autolock"));
    const auto minutes = parseDecimal(value("Timeout"));
    if (minutes && *minutes <= kLongest / kMinute) settings.timeoutSeconds = *minutes * kMinute;
    settings.lockEnabled = settings.enabled;
    settings.lockDelaySeconds = parseDecimal(value("LockGrace"));
    return settings;
}

std::optional<ScreenSaverSettings> parseLogindIdle(std::string_view text) {
    const auto action = iniValue(text, "[Login]", "IdleAction");
    if (!action || action->empty()) return std::nullopt;
    ScreenSaverSettings settings;
    settings.program = "systemd-logind";
    settings.enabled = *action != "ignore";
    settings.timeoutSeconds = parseTimeSpan(iniValue(text, "[Login]", "IdleActionSec").value_or(""));
    settings.lockEnabled = *action == "lock";
    return settings;
}
