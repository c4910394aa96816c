#include <string>

#include "scanners/zukhw/guests.h"
#include "scanners/zukhw/json.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kDocker[] = "var/lib/docker/containers";
constexpr char kPodman[] = "var/lib/containers/storage/overlay-containers/containers.json";

std::optional<bool> flagMember(const Json& object, const char* name) {
    const Json* member = findMember(object, name);
    return member != nullptr && member->is_boolean() ? std::optional(member->get<bool>()) : std::nullopt;
}

// Limits that are not set stand there as 0.
std::optional<std::uint64_t> limitMember(const Json& object, const char* name) {
    const Json* member = findMember(object, name);
    if (member == nullptr || !member->is_number_unsigned() || *member == 0) return std::nullopt;
    return member->get<std::uint64_t>();
}

void setDockerNetworks(const Json& config, Guest* guest) {
    const Json* settings = findMember(config, "NetworkSettings");
    const Json* networks = settings == nullptr ? nullptr : findMember(*settings, "Networks");
    if (networks == nullptr || !networks->is_object()) return;
    for (const Json& network : *networks) {
        const std::string address = textMember(network, "MacAddress");
        if (!address.empty()) guest->macAddresses.push_back(toLower(address));
    }
}

// What the container is allowed, and whether it comes back by itself.
void setDockerLimits(const Json& host, Guest* guest) {
    constexpr std::uint64_t kNano = 1000000000;
    guest->memoryBytes = limitMember(host, "Memory");
    const auto cpus = limitMember(host, "NanoCpus");
    if (cpus && *cpus % kNano == 0) guest->virtualCpus = *cpus / kNano;
    const Json* policy = findMember(host, "RestartPolicy");
    const std::string restart = policy == nullptr ? "" : textMember(*policy, "Name");
    if (restart == "always" || restart == "unless-stopped") guest->autostart = true;
    if (restart == "no") guest->autostart = false;
}

Guest dockerGuest(const Json& config) {
    Guest guest;
    guest.isContainer = true;
    guest.hypervisor = "docker";
    guest.name = textMember(config, "Name");
    if (startsWith(guest.name, "/")) guest.name.erase(0, 1);
    if (guest.name.empty()) guest.name = textMember(config, "ID");
    guest.createdAt = parseIsoTime(textMember(config, "Created"));
    const Json* state = findMember(config, "State");
    if (state != nullptr) guest.running = flagMember(*state, "Running");
    const Json* settings = findMember(config, "Config");
    guest.image = settings == nullptr ? "" : textMember(*settings, "Image");
    if (guest.image.empty()) guest.image = textMember(config, "Image");
    setDockerNetworks(config, &guest);
    return guest;
}

// The metadata is a JSON document of its own within a text.
Guest podmanGuest(Machine& machine, const Json& container) {
    Guest guest;
    const std::string id = textMember(container, "id");
    const Json metadata = parseJson(textMember(container, "metadata")).value_or(Json());
    const Json* names = findMember(container, "names");
    const bool isNamed =
        names != nullptr && names->is_array() && !names->empty() && names->front().is_string();
    guest.isContainer = true;
    guest.hypervisor = "podman";
    guest.name = isNamed ? names->front().get<std::string>() : id;
    guest.image = textMember(metadata, "image-name");
    if (guest.image.empty()) guest.image = textMember(container, "image");
    guest.createdAt = parseIsoTime(textMember(container, "created"));
    // The programs that run containers keep their state while they do; there are more of them than these.
    const bool runs = !id.empty() && (machine.exists("run/crun/" + id) || machine.exists("run/runc/" + id));
    if (runs) guest.running = true;
    guest.path = kPodman;
    return guest;
}

}  // namespace

std::vector<Guest> readDockerGuests(Machine& machine) {
    std::vector<Guest> guests;
    if (!machine.exists(kDocker)) return guests;
    for (const std::string& id : machine.list(kDocker)) {
        const std::string directory = std::string(kDocker) + '/' + id;
        const auto config = readJson(machine, directory + "/config.v2.json");
        if (!config) continue;
        Guest guest = dockerGuest(*config);
        if (const auto host = readJson(machine, directory + "/hostconfig.json"))
            setDockerLimits(*host, &guest);
        guest.path = directory + "/config.v2.json";
        if (!guest.name.empty()) guests.push_back(std::move(guest));
    }
    return guests;
}

std::vector<Guest> readPodmanGuests(Machine& machine) {
    std::vector<Guest> guests;
    const auto document = machine.exists(kPodman) ? readJson(machine, kPodman) : std::nullopt;
    if (!document || !document->is_array()) return guests;
    for (const Json& container : *document) {
        Guest guest = podmanGuest(machine, container);
        if (!guest.name.empty()) guests.push_back(std::move(guest));
    }
    return guests;
}
