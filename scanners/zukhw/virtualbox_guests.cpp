#include <algorithm>
#include <map>
#include <set>

#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/xml_events.h"
#include "scanners/zukhw/guests.h"
#include "scanners/zukhw/home_directory.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/uuid.h"

namespace {

constexpr std::uint64_t kMebibyte = std::uint64_t{1} << 20U;

// "{4C4C4544-0038-3510-8052-B4C04F4A3132}"
std::string withoutBraces(std::string_view text) {
    if (startsWith(text, "{") && endsWith(text, "}")) text = text.substr(1, text.size() - 2);
    return toLower(text);
}

// "0800276F3A1B"
std::string withColons(const std::string& address) {
    std::string text;
    for (std::size_t i = 0; i < address.size(); i += 2) {
        if (i > 0) text += ':';
        text += address.substr(i, 2);
    }
    return toLower(text);
}

// The list of a user's machines: where the definition of each is.
class RegistryReader : public XmlEvents {
  public:
    void onStart(const std::string& path, const XmlAttributes& attributes) override {
        if (path != "VirtualBox/Global/MachineRegistry/MachineEntry") return;
        const std::string source = attributeText(attributes, "src");
        if (!source.empty()) sources_.push_back(source);
    }

    const std::vector<std::string>& sources() const { return sources_; }

  private:
    std::vector<std::string> sources_;
};

// A definition: the machine as it is now, and within elements Snapshot as it once was.
class DefinitionReader : public XmlEvents {
  public:
    void onStart(const std::string& path, const XmlAttributes& attributes) override {
        text_.clear();
        if (path == "VirtualBox/Machine") {
            guest_.uuid = cleanUuid(withoutBraces(attributeText(attributes, "uuid")));
            guest_.name = attributeText(attributes, "name");
        }
        if (endsWith(path, "/HardDisk"))
            locations_[attributeText(attributes, "uuid")] = attributeText(attributes, "location");
        if (path.find("/Snapshot") != std::string::npos) return;
        if (endsWith(path, "/AttachedDevice")) isDisk_ = attributeText(attributes, "type") == "HardDisk";
        if (endsWith(path, "/AttachedDevice/Image") && isDisk_)
            attached_.push_back(attributeText(attributes, "uuid"));
        if (endsWith(path, "/Autostart")) guest_.autostart = attributeText(attributes, "enabled") == "true";
        if (startsWith(path, kHardware)) setHardware(path.substr(kHardware.size()), attributes);
    }

    void onText(const std::string&, std::string_view text) override { text_ += text; }

    void onEnd(const std::string& path) override {
        if (path == "VirtualBox/Machine/Description") guest_.description = text_;
    }

    Guest takeGuest() {
        for (const std::string& disk : attached_) {
            const auto location = locations_.find(disk);
            if (location != locations_.end()) guest_.disks.push_back(location->second);
        }
        return std::move(guest_);
    }

  private:
    static constexpr std::string_view kHardware = "VirtualBox/Machine/Hardware/";

    void setHardware(std::string_view element, const XmlAttributes& attributes) {
        if (element == "CPU") {
            const std::string count = attributeText(attributes, "count");
            guest_.virtualCpus = count.empty() ? 1 : parseDecimal(count);  // one is not written down
        }
        if (element == "Memory") {
            const auto amount = parseDecimal(attributeText(attributes, "RAMSize"));
            if (amount && *amount <= UINT64_MAX / kMebibyte) guest_.memoryBytes = *amount * kMebibyte;
        }
        const bool isAdapter = element == "Network/Adapter" && attributeText(attributes, "enabled") == "true";
        const std::string address = isAdapter ? attributeText(attributes, "MACAddress") : "";
        if (!address.empty()) guest_.macAddresses.push_back(withColons(address));
    }

    Guest guest_;
    std::map<std::string, std::string> locations_;  // of disks, by their UUID
    std::vector<std::string> attached_;
    bool isDisk_ = false;
    std::string text_;
};

// False when the file is not there, or is none.
bool readFile(Machine& machine, const std::string& path, XmlEvents* reader) {
    const FileDescriptor file = machine.open(path);
    if (!file.valid()) return false;
    if (readXmlFile(descriptorPath(file), reader).empty()) return true;
    machine.sources().malformed(path, 0);
    return false;
}

void readMachines(Machine& machine, const std::string& directory, std::vector<Guest>* guests) {
    const std::string registry = directory + "VirtualBox.xml";
    RegistryReader reader;
    if (!machine.exists(registry) || !readFile(machine, registry, &reader)) return;
    for (const std::string& source : reader.sources()) {
        const std::string path = startsWith(source, "/") ? source.substr(1) : directory + source;
        DefinitionReader definition;
        if (!readFile(machine, path, &definition)) continue;
        Guest guest = definition.takeGuest();
        if (guest.name.empty()) continue;
        guest.hypervisor = "virtualbox";
        guest.path = path;
        guests->push_back(std::move(guest));
    }
}

}  // namespace

std::vector<Guest> readVirtualBoxGuests(Machine& machine) {
    std::vector<Guest> guests;
    std::set<std::string> homes;
    for (const Account* user : machine.shared<LocalUsers>().all) {
        if (!homes.insert(user->home).second) continue;
        const std::string home = user->home.substr(1);
        readMachines(machine, home + "/.config/VirtualBox/", &guests);
        readMachines(machine, home + "/.VirtualBox/", &guests);
    }
    return guests;
}
