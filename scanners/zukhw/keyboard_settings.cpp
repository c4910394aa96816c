#include "scanners/zukhw/keyboard_settings.h"

#include <map>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/text.h"

namespace {

void takeFrom(const std::map<std::string, std::string>& values, const char* key, std::string* to) {
    const auto found = values.find(key);
    if (to->empty() && found != values.end()) *to = found->second;
}

// The value of a line of an X configuration, `Option "XkbLayout" "de"`.
std::string_view xOption(std::string_view line) {
    const std::vector<std::string_view> parts = split(line, '"');
    return parts.size() >= 5 ? parts[3] : std::string_view();
}

void readXConfiguration(std::string_view text, KeyboardSettings* settings) {
    for (const std::string_view line : lines(text)) {
        if (!startsWith(trim(line), "Option")) continue;
        const std::string_view value = xOption(line);
        if (settings->layout.empty() && line.find("\"XkbLayout\"") != std::string_view::npos)
            settings->layout = value;
        if (settings->variant.empty() && line.find("\"XkbVariant\"") != std::string_view::npos)
            settings->variant = value;
        if (settings->model.empty() && line.find("\"XkbModel\"") != std::string_view::npos)
            settings->model = value;
    }
}

}  // namespace

KeyboardSettings::KeyboardSettings(Machine& machine) {
    const auto keyboard = parseOsRelease(machine.text("etc/default/keyboard"));
    const auto console = parseOsRelease(machine.text("etc/vconsole.conf"));
    takeFrom(keyboard, "XKBLAYOUT", &layout);
    takeFrom(keyboard, "XKBVARIANT", &variant);
    takeFrom(keyboard, "XKBMODEL", &model);
    takeFrom(console, "XKBLAYOUT", &layout);
    takeFrom(console, "XKBVARIANT", &variant);
    takeFrom(console, "XKBMODEL", &model);
    takeFrom(console, "KEYMAP", &consoleKeymap);
    takeFrom(console, "FONT", &consoleFont);
    if (layout.empty()) readXConfiguration(machine.text("etc/X11/xorg.conf.d/00-keyboard.conf"), this);
    if (consoleKeymap.empty()) {
        takeFrom(parseOsRelease(machine.text("etc/sysconfig/keyboard")), "KEYTABLE", &consoleKeymap);
    }
    if (consoleFont.empty()) {
        takeFrom(parseOsRelease(machine.text("etc/default/console-setup")), "FONT", &consoleFont);
    }
}
