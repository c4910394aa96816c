#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Machine;

// A virtual machine or container that is defined here. What its definition does not tell is empty.
struct Guest {
    std::string name, uuid, hypervisor, description;
    std::string image;  // what a container was made of
    bool isContainer = false;
    std::optional<bool> running, autostart;
    std::optional<std::uint64_t> memoryBytes, virtualCpus;
    std::optional<std::int64_t> createdAt;  // seconds since 1970
    std::vector<std::string> macAddresses, disks;
    std::string path;  // of the definition, relative to the root
};

// The definition of libvirt in the file at `path`, which may be any that can be opened; no value when it is
// none.
std::optional<Guest> readLibvirtGuest(const std::string& path);
// "key: value" lines up to the first snapshot.
Guest parseProxmoxGuest(std::string_view text, bool isContainer);
// "lxc.key = value" lines.
Guest parseLxcGuest(std::string_view text);

std::vector<Guest> readLibvirtGuests(Machine& machine);
std::vector<Guest> readProxmoxGuests(Machine& machine);
std::vector<Guest> readLxcGuests(Machine& machine);
std::vector<Guest> readNspawnGuests(Machine& machine);
// Of the users whose homes can be read.
std::vector<Guest> readVirtualBoxGuests(Machine& machine);
std::vector<Guest> readDockerGuests(Machine& machine);
std::vector<Guest> readPodmanGuests(Machine& machine);
