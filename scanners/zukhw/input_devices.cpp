#include "scanners/zukhw/input_devices.h"

#include <algorithm>
#include <map>
#include <utility>

#include "scanners/zukhw/architecture.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/input_kinds.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/udev_database.h"

namespace {

constexpr char kDirectory[] = "sys/class/input";
constexpr std::string_view kDevice = "input";

// By the names that the kernel gives them in a device's event: NAME, PHYS, UNIQ, PRODUCT, PROP, EV, KEY, REL,
// ABS, LED.
using Facts = std::map<std::string, std::string, std::less<>>;

std::string valueOf(const Facts& facts, std::string_view key) {
    const auto found = facts.find(key);
    return found == facts.end() ? std::string() : found->second;
}

// What stands between the first and the last quotation mark; all of it without them.
std::string unquoted(std::string_view text) {
    const std::size_t first = text.find('"');
    const std::size_t last = text.rfind('"');
    if (first == last) return std::string(text);
    return std::string(text.substr(first + 1, last - first - 1));
}

Facts parseEvent(std::string_view text) {
    Facts facts;
    for (const std::string_view line : lines(text)) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        facts.emplace(line.substr(0, equals), unquoted(trim(line.substr(equals + 1))));
    }
    return facts;
}

// Copies of a machine may lack the event file.
Facts readAttributes(Machine& machine, const std::string& path) {
    static constexpr std::pair<const char*, const char*> kFiles[] = {
        {"NAME", "/name"},
        {"PHYS", "/phys"},
        {"UNIQ", "/uniq"},
        {"PROP", "/properties"},
        {"EV", "/capabilities/ev"},
        {"KEY", "/capabilities/key"},
        {"REL", "/capabilities/rel"},
        {"ABS", "/capabilities/abs"},
        {"LED", "/capabilities/led"},
    };
    Facts facts;
    for (const auto& [key, file] : kFiles) facts.emplace(key, machine.text(path + file));
    std::string product;
    for (const char* file : {"/id/bustype", "/id/vendor", "/id/product", "/id/version"}) {
        product += machine.text(path + file) + '/';
    }
    facts.emplace("PRODUCT", product);
    return facts;
}

// A paragraph of /proc/bus/input/devices, by the same names. Its lines are "B: KEY=...", "N: Name="...""
// and "I: Bus=0011 Vendor=0001 Product=0001 Version=ab41".
Facts parseParagraph(std::string_view paragraph) {
    static constexpr std::pair<std::string_view, const char*> kNames[] = {
        {"N: Name=", "NAME"}, {"P: Phys=", "PHYS"}, {"U: Uniq=", "UNIQ"}, {"S: Sysfs=", "SYSFS"}};
    Facts facts;
    for (const std::string_view line : lines(paragraph)) {
        for (const auto& [head, key] : kNames) {
            if (startsWith(line, head)) facts.emplace(key, unquoted(line.substr(head.size())));
        }
        const std::size_t equals = line.find('=');
        if (startsWith(line, "B: ") && equals != std::string_view::npos) {
            facts.emplace(line.substr(3, equals - 3), line.substr(equals + 1));
        }
        if (!startsWith(line, "I: ")) continue;
        std::string product;
        for (const std::string_view word : words(line.substr(3))) {
            product += std::string(word.substr(word.find('=') + 1)) + '/';
        }
        facts.emplace("PRODUCT", product);
    }
    return facts;
}

struct Source {
    std::string path;  // of its directory
    Facts facts;
};

std::vector<Source> readDirectory(Machine& machine) {
    std::vector<Source> sources;
    for (const std::string& name : machine.list(kDirectory)) {
        if (!startsWith(name, kDevice) || !parseDecimal(name.substr(kDevice.size()))) continue;
        const std::string path = std::string(kDirectory) + '/' + name;
        Facts facts = parseEvent(machine.text(path + "/uevent"));
        if (valueOf(facts, "PRODUCT").empty()) facts.merge(readAttributes(machine, path));
        sources.push_back({path, std::move(facts)});
    }
    return sources;
}

std::vector<Source> readTable(Machine& machine) {
    std::vector<Source> sources;
    const std::string table = machine.read("proc/bus/input/devices").value_or("");
    for (std::string_view rest = table; !rest.empty();) {
        const std::size_t end = std::min(rest.find("\n\n"), rest.size());
        Facts facts = parseParagraph(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 2, rest.size()));
        if (valueOf(facts, "PRODUCT").empty()) continue;
        std::string path = "sys" + valueOf(facts, "SYSFS");
        sources.push_back({std::move(path), std::move(facts)});
    }
    return sources;
}

// A copy's files have words of the width that the program had which copied them: its user space's.
unsigned wordBits(Machine& machine, const std::vector<Source>& sources) {
    const auto isWide = [](const Source& source) { return hasWideWords(valueOf(source.facts, "KEY")); };
    if (std::any_of(sources.begin(), sources.end(), isWide)) return 64;
    if (machine.live()) return sizeof(long) * 8;
    return machine.shared<Architecture>().userBits() == 32U ? 32 : 64;
}

const char* busName(std::uint64_t bus) {
    static constexpr std::pair<unsigned, const char*> kBuses[] = {
        {0x00, "Virtual"},  {0x01, "PCI"}, {0x02, "ISAPnP"}, {0x03, "USB"},      {0x05, "Bluetooth"},
        {0x06, "Virtual"},  {0x10, "ISA"}, {0x11, "PS/2"},   {0x13, "RS-232"},   {0x14, "Gameport"},
        {0x15, "Parallel"}, {0x17, "ADB"}, {0x18, "I2C"},    {0x19, "Platform"}, {0x1C, "SPI"},
        {0x1D, "RMI"},      {0x1E, "CEC"},
    };
    for (const auto& [code, name] : kBuses) {
        if (code == bus) return name;
    }
    return "";
}

// "11/2/7/1b1": bus, vendor, product, version. Zero stands for what a device does not have.
void parseProduct(std::string_view product, InputDevice* device) {
    const std::vector<std::string_view> parts = split(product, '/');
    if (parts.size() < 4) return;
    const auto id = [&](std::size_t part) {
        const auto value = parseHex(parts[part]);
        return value == 0U ? std::string() : hex(value, 4);
    };
    device->bus = busName(parseHex(parts[0]).value_or(UINT64_MAX));
    device->vendor = id(1);
    device->product = id(2);
    device->version = id(3);
}

// udev knows more than the abilities tell, for instance that something which looks like a mouse is a stick.
bool classifyByUdev(Machine& machine, const Source& source, InputDevice* device) {
    static constexpr std::pair<const char*, const char*> kKinds[] = {
        {"ID_INPUT_POINTINGSTICK", "TrackPoint"}, {"ID_INPUT_TOUCHPAD", "Touchpad"},
        {"ID_INPUT_TOUCHSCREEN", "Touchscreen"},  {"ID_INPUT_TABLET", "Tablet"},
        {"ID_INPUT_JOYSTICK", "Joystick"},        {"ID_INPUT_MOUSE", "Mouse"},
    };
    const std::string name = source.path.substr(source.path.find_last_of('/') + 1);
    const UdevDatabase::Properties& known = machine.shared<UdevDatabase>().of("+input:" + name);
    // Tools that record devices put udev's knowledge into the event file.
    const auto isSet = [&](const char* key) {
        const auto found = known.find(key);
        return found != known.end() ? found->second == "1" : valueOf(source.facts, key) == "1";
    };
    if (!isSet("ID_INPUT")) return false;
    const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [&](const auto& candidate) { return isSet(candidate.first); });
    if (kind != std::end(kKinds)) device->pointing = kind->second;
    device->keyboard = isSet("ID_INPUT_KEYBOARD");
    return true;
}

InputDevice makeDevice(Machine& machine, const Source& source, unsigned wordBits) {
    const auto bits = [&](const char* key) { return InputBits(valueOf(source.facts, key), wordBits); };
    InputDevice device;
    device.name = valueOf(source.facts, "NAME");
    device.path = source.path;
    device.serial = valueOf(source.facts, "UNIQ");
    device.physicalPath = valueOf(source.facts, "PHYS");
    parseProduct(valueOf(source.facts, "PRODUCT"), &device);
    const InputAbilities abilities = {bits("PROP"), bits("EV"), bits("KEY"), bits("REL"), bits("ABS")};
    if (!classifyByUdev(machine, source, &device)) {
        device.pointing = pointingKind(abilities);
        device.keyboard = isKeyboard(abilities);
    }
    device.keys = abilities.keys;
    device.relativeAxes = abilities.relativeAxes;
    device.lights = bits("LED");
    return device;
}

}  // namespace

InputDevices::InputDevices(Machine& machine) {
    std::vector<Source> sources = readDirectory(machine);
    if (sources.empty()) sources = readTable(machine);
    const unsigned bits = wordBits(machine, sources);
    for (const Source& source : sources) devices_.push_back(makeDevice(machine, source, bits));
}
