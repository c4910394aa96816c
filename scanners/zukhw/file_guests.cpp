#include <initializer_list>
#include <string>
#include <utility>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/guests.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/uuid.h"

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;
constexpr char kNspawnStart[] = "etc/systemd/system/machines.target.wants/systemd-nspawn@";

// "scsi0", "unused1" is none.
bool isDisk(std::string_view key) {
    for (const std::string_view bus : {"ide", "sata", "scsi", "virtio", "efidisk", "tpmstate", "mp"}) {
        if (!startsWith(key, bus)) continue;
        const std::string_view number = key.substr(bus.size());
        if (!number.empty() && parseDecimal(number)) return true;
    }
    return key == "rootfs";
}

// The address in "virtio=BC:24:11:00:00:01,bridge=vmbr0" or "name=eth0,hwaddr=BC:24:11:00:00:01".
std::string macIn(std::string_view value) {
    constexpr std::size_t kLength = 17;
    for (const std::string_view part : split(value, ',')) {
        const std::string_view address = part.substr(part.find('=') + 1);
        const bool good = address.size() == kLength && split(address, ':').size() == 6;
        if (good) return toLower(address);
    }
    return "";
}

// Notes are kept as comments, with %3A for a colon.
std::string decodePercent(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code =
            text[i] == '%' && i + 2 < text.size() ? parseHex(text.substr(i + 1, 2)) : std::nullopt;
        out += code ? static_cast<char>(*code) : text[i];
        if (code) i += 2;
    }
    return out;
}

// "creation-qemu=8.0.2,ctime=1689000000"
std::optional<std::int64_t> creationTime(std::string_view value) {
    constexpr std::string_view kKey = "ctime=";
    for (const std::string_view part : split(value, ',')) {
        if (startsWith(part, kKey)) return parseSigned(part.substr(kKey.size()));
    }
    return std::nullopt;
}

// Whether a process runs in one of the control groups that the container would have; no value where they
// cannot be seen.
std::optional<bool> isPopulated(Machine& machine, std::initializer_list<std::string> groups) {
    const std::string top = "sys/fs/cgroup/";
    if (!machine.exists(top + "cgroup.controllers")) return std::nullopt;
    for (const std::string& group : groups) {
        const std::string events = top + group + "/cgroup.events";
        if (machine.exists(events) && findValue(machine.text(events), "populated", ' ') == "1") return true;
    }
    return false;
}

void setProxmoxField(Guest* guest, std::string_view key, std::string_view value) {
    const bool isNetwork = startsWith(key, "net") && parseDecimal(key.substr(3)).has_value();
    if (key == "name" || key == "hostname") guest->name = value;
    if (key == "memory") {
        const auto amount = parseDecimal(value);
        if (amount && *amount <= UINT64_MAX / kMebibyte) guest->memoryBytes = *amount * kMebibyte;
    }
    if (key == "cores") guest->virtualCpus = parseDecimal(value);
    if (key == "onboot") guest->autostart = value == "1";
    if (key == "description") guest->description = decodePercent(value);
    if (key == "meta") guest->createdAt = creationTime(value);
    if (key == "smbios1" && value.find("uuid=") != std::string_view::npos) {
        const std::string_view rest = value.substr(value.find("uuid=") + 5);
        guest->uuid = cleanUuid(rest.substr(0, rest.find(',')));
    }
    if (isNetwork && !macIn(value).empty()) guest->macAddresses.push_back(macIn(value));
    if (isDisk(key) && value.find("media=cdrom") == std::string_view::npos)
        guest->disks.emplace_back(value.substr(0, value.find(',')));
}

}  // namespace

Guest parseProxmoxGuest(std::string_view text, bool isContainer) {
    Guest guest;
    guest.isContainer = isContainer;
    guest.hypervisor = isContainer ? "lxc" : "kvm";
    std::uint64_t sockets = 1;
    for (const std::string_view line : lines(text)) {
        if (startsWith(line, "[")) break;  // snapshots: what it once was
        if (startsWith(line, "#")) {
            if (!guest.description.empty()) guest.description += ' ';
            guest.description += decodePercent(line.substr(1));
            continue;
        }
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) continue;
        const std::string_view key = line.substr(0, colon);
        const std::string_view value = trim(line.substr(colon + 1));
        if (key == "sockets") {
            sockets = parseDecimal(value).value_or(1);
            if (!guest.virtualCpus) guest.virtualCpus = 1;  // what cores are when nothing else is said
        }
        setProxmoxField(&guest, key, value);
    }
    if (!isContainer && guest.virtualCpus && sockets > 0 && *guest.virtualCpus <= UINT64_MAX / sockets)
        *guest.virtualCpus *= sockets;
    return guest;
}

Guest parseLxcGuest(std::string_view text) {
    Guest guest;
    guest.isContainer = true;
    guest.hypervisor = "lxc";
    for (const std::string_view line : lines(text)) {
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string_view key = trim(line.substr(0, equals));
        const std::string_view value = trim(line.substr(equals + 1));
        if (key == "lxc.uts.name" || key == "lxc.utsname") guest.name = value;
        if (key == "lxc.rootfs.path" || key == "lxc.rootfs") guest.disks.emplace_back(value);
        if (key == "lxc.start.auto") guest.autostart = value == "1";
        if (key == "lxc.cgroup2.memory.max" || key == "lxc.cgroup.memory.limit_in_bytes")
            guest.memoryBytes = parseSize(value);
        const bool isAddress = startsWith(key, "lxc.net") && endsWith(key, ".hwaddr");
        if (isAddress) guest.macAddresses.push_back(toLower(value));
    }
    return guest;
}

std::vector<Guest> readProxmoxGuests(Machine& machine) {
    std::vector<Guest> guests;
    for (const bool isContainer : {false, true}) {
        const std::string directory = std::string("etc/pve/") + (isContainer ? "lxc/" : "qemu-server/");
        if (!machine.exists(directory)) continue;
        for (const std::string& name : machine.list(directory)) {
            const std::string path = directory + name;
            const auto text = endsWith(name, ".conf") ? machine.read(path) : std::nullopt;
            if (!text) continue;
            Guest guest = parseProxmoxGuest(*text, isContainer);
            const std::string number = name.substr(0, name.find('.'));
            if (guest.name.empty()) guest.name = number;
            guest.running = isContainer ? isPopulated(machine, {"lxc/" + number})
                                        : machine.exists("run/qemu-server/" + number + ".pid");
            guest.path = path;
            guests.push_back(std::move(guest));
        }
    }
    return guests;
}

std::vector<Guest> readLxcGuests(Machine& machine) {
    const std::string directory = "var/lib/lxc/";
    std::vector<Guest> guests;
    if (!machine.exists(directory)) return guests;
    for (const std::string& name : machine.list(directory)) {
        const std::string path = directory + name + "/config";
        const auto text = machine.read(path);
        if (!text) continue;
        Guest guest = parseLxcGuest(*text);
        guest.running = isPopulated(machine, {"lxc.payload." + name, "lxc/" + name});
        guest.name = name;  // what it is started by; what it calls itself may be another
        guest.path = path;
        guests.push_back(std::move(guest));
    }
    return guests;
}

std::vector<Guest> readNspawnGuests(Machine& machine) {
    const std::string directory = "var/lib/machines/";
    std::vector<Guest> guests;
    if (!machine.exists(directory)) return guests;
    for (const std::string& name : machine.list(directory)) {
        const std::string path = directory + name;
        const auto facts = machine.facts(path);
        if (startsWith(name, ".") || !facts) continue;
        const bool isImage = endsWith(name, ".raw") && facts->type == FileFacts::Type::Regular;
        if (!isImage && facts->type != FileFacts::Type::Directory) continue;
        Guest guest;
        guest.name = isImage ? name.substr(0, name.size() - 4) : name;
        guest.hypervisor = "systemd-nspawn";
        guest.isContainer = true;
        guest.running = machine.exists("run/systemd/machines/" + guest.name);
        guest.autostart = machine.facts(kNspawnStart + guest.name + ".service", false).has_value();
        guest.path = path;
        guests.push_back(std::move(guest));
    }
    return guests;
}
