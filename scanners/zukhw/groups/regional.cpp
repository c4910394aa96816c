// Group "Regional": one instance, language, time zone and keyboard of the system.
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "scanners/shared/bytes.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/keyboard_config.h"
#include "scanners/zukhw/locale_facts.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/posix_tz.h"
#include "scanners/zukhw/text.h"

namespace {

using Settings = std::map<std::string, std::string>;

// LANG and LC_*, of the first file that the distribution keeps them in.
Settings localeSettings(Machine& machine) {
    for (const char* path : {"etc/locale.conf", "etc/default/locale", "etc/sysconfig/i18n"}) {
        Settings settings = parseOsRelease(machine.text(path));
        if (!settings.empty()) return settings;
    }
    return {};
}

std::string valueOf(const Settings& settings, const std::string& key) {
    const auto found = settings.find(key);
    return found == settings.end() ? "" : found->second;
}

// "de_AT.UTF-8@euro": language, territory, character set, variant. C and POSIX are no language.
void writeLanguage(std::string_view locale, GroupWriter& out) {
    const std::string_view name = locale.substr(0, locale.find_first_of(".@"));
    const std::size_t underscore = name.find('_');
    if (name != "C" && name != "POSIX") out.text("Language", name.substr(0, underscore));
    if (underscore != std::string_view::npos) out.text("Territory", name.substr(underscore + 1));
    const std::size_t dot = locale.find('.');
    if (dot == std::string_view::npos) return;
    const std::string_view rest = locale.substr(dot + 1);
    out.text("Charset", rest.substr(0, rest.find('@')));
}

void writeLocale(const Settings& settings, GroupWriter& out) {
    const std::string locale = valueOf(settings, "LANG");
    std::vector<std::string> others;
    for (const auto& [name, value] : settings) {
        if (!startsWith(name, "LC_") || value.empty()) continue;
        others.push_back(std::string(name).append("=").append(value));
    }
    out.text("Locale", locale);
    writeLanguage(locale, out);
    out.list("LocaleSettings", others);
}

// "Europe/Berlin": the link says it, which a copy of the zone's file cannot.
std::string timeZoneName(Machine& machine) {
    constexpr std::string_view kDirectory = "zoneinfo/";
    for (const std::string& path : {machine.link("etc/localtime"), machine.resolve("etc/localtime")}) {
        const std::size_t found = path.find(kDirectory);
        if (found != std::string::npos) return path.substr(found + kDirectory.size());
    }
    return machine.text("etc/timezone");
}

void writeOffsets(Machine& machine, GroupWriter& out) {
    constexpr std::int64_t kMinute = 60;
    const std::string file = machine.read("etc/localtime").value_or("");
    const auto zone = parsePosixTimeZone(timeZoneRule(file));
    if (!zone) return;
    // A copy is as it was when it was made, and nobody knows when that was.
    if (machine.live()) out.number("UtcOffsetMinutes", zone->offsetAt(std::time(nullptr)) / kMinute);
    if (!machine.live() && !zone->daylight) out.number("UtcOffsetMinutes", zone->standard / kMinute);
    out.number("StandardOffsetMinutes", zone->standard / kMinute);
    out.boolean("DaylightSaving", zone->daylight.has_value());
}

// What the clock of the machine shows, by the third line of the file.
const char* hardwareClock(Machine& machine) {
    const std::string text = machine.text("etc/adjtime");
    const std::vector<std::string_view> all = lines(text);
    if (all.size() < 3) return "";
    if (trim(all[2]) == "UTC") return "utc";
    return trim(all[2]) == "LOCAL" ? "local" : "";
}

void writeCustoms(Machine& machine, const Settings& settings, GroupWriter& out) {
    if (!machine.live()) return;
    const auto localeFor = [&](const char* category) {
        for (const char* key : {"LC_ALL", category}) {
            std::string value = valueOf(settings, key);
            if (!value.empty()) return value;
        }
        return valueOf(settings, "LANG");
    };
    out.text("FirstDayOfWeek", firstDayOfWeek(localeFor("LC_TIME")));
    out.text("MeasurementSystem", measurementSystem(localeFor("LC_MEASUREMENT")));
    out.text("PaperSize", paperSize(localeFor("LC_PAPER")));
}

// The names of locales, in directories of their own and in the archive, whose header counts them.
std::optional<std::uint64_t> installedLocales(Machine& machine) {
    constexpr char kDirectory[] = "usr/lib/locale";
    constexpr char kArchive[] = "locale-archive";
    constexpr std::uint64_t kMagic = 0xDE020109;
    constexpr std::size_t kCount = 12;
    if (!machine.exists(kDirectory)) return std::nullopt;
    std::uint64_t count = 0;
    for (const std::string& name : machine.list(kDirectory)) {
        const std::string path = std::string(kDirectory) + '/' + name;
        if (name != kArchive) {
            const auto facts = machine.facts(path);
            if (facts && facts->type == FileFacts::Type::Directory) ++count;
            continue;
        }
        const std::string head = machine.readHead(path, kCount + sizeof(std::uint32_t)).value_or("");
        for (const Bytes::Order order : {Bytes::Order::Little, Bytes::Order::Big}) {
            const Bytes bytes(head, order);
            if (bytes.number(0, 4) == kMagic) count += bytes.numberOr0(kCount, 4);
        }
    }
    return count;
}

}  // namespace

void collectRegional(Machine& machine, GroupWriter& out) {
    const Settings settings = localeSettings(machine);
    const KeyboardConfig& keyboard = machine.shared<KeyboardConfig>();
    out.beginInstance();
    writeLocale(settings, out);
    out.text("TimeZone", timeZoneName(machine));
    writeOffsets(machine, out);
    out.text("HardwareClock", hardwareClock(machine));
    out.text("KeyboardLayout", keyboard.layout);
    out.text("ConsoleKeymap", keyboard.consoleKeymap);
    out.text("ConsoleFont", keyboard.consoleFont);
    writeCustoms(machine, settings, out);
    out.number("InstalledLocales", installedLocales(machine));
}
