#include "scanners/zukhw/keyboard_config.h"

#include <map>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/text.h"

namespace {

using Settings = std::map<std::string, std::string>;

// Shell assignments, as in os-release.
Settings readSettings(Machine& machine, const char* path) {
    return parseOsRelease(machine.read(path).value_or(""));
}

// Lines like: Option "XkbLayout" "de"
Settings readServerOptions(Machine& machine, const char* path) {
    Settings settings;
    const std::string text = machine.read(path).value_or("");
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> parts = split(line, '"');
        if (parts.size() >= 4 && trim(parts[0]) == "Option") settings.emplace(parts[1], parts[3]);
    }
    return settings;
}

std::string valueOf(const Settings& settings, const char* key) {
    const auto found = settings.find(key);
    return found == settings.end() ? std::string() : found->second;
}

}  // namespace

KeyboardConfig::KeyboardConfig(Machine& machine) {
    const Settings console = readSettings(machine, "etc/vconsole.conf");
    consoleKeymap = valueOf(console, "KEYMAP");
    consoleFont = valueOf(console, "FONT");
    if (consoleKeymap.empty())
        consoleKeymap = valueOf(readSettings(machine, "etc/sysconfig/keyboard"), "KEYTABLE");
    if (consoleFont.empty())
        consoleFont = valueOf(readSettings(machine, "etc/default/console-setup"), "FONT");
    Settings settings = readSettings(machine, "etc/default/keyboard");
    if (valueOf(settings, "XKBLAYOUT").empty())
        settings = console;  // recent versions of systemd keep them here
    layout = valueOf(settings, "XKBLAYOUT");
    variant = valueOf(settings, "XKBVARIANT");
    model = valueOf(settings, "XKBMODEL");
    if (!layout.empty()) return;
    const Settings server = readServerOptions(machine, "etc/X11/xorg.conf.d/00-keyboard.conf");
    layout = valueOf(server, "XkbLayout");
    variant = valueOf(server, "XkbVariant");
    model = valueOf(server, "XkbModel");
}
