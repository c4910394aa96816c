#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/xml_events.h"
#include "scanners/zukhw/guests.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/uuid.h"

namespace {

constexpr std::string_view kDefinition = ".xml";

// Bytes of one unit of libvirt's amounts of memory; 0 when it is none.
std::uint64_t unitOf(std::string_view name) {
    if (name.empty() || name == "KiB" || name == "k") return 1024;
    if (name == "b" || name == "bytes") return 1;
    if (name == "MiB" || name == "M") return std::uint64_t{1} << 20U;
    return name == "GiB" || name == "G" ? std::uint64_t{1} << 30U : 0;
}

class DefinitionReader : public XmlEvents {
  public:
    void onStart(const std::string& path, const XmlAttributes& attributes) override {
        text_.clear();
        if (path == "domain") {
            isDomain_ = true;
            guest_.hypervisor = attributeText(attributes, "type");
            guest_.isContainer = guest_.hypervisor == "lxc";
        }
        if (path == "domain/memory") memoryUnit_ = unitOf(attributeText(attributes, "unit"));
        if (path == "domain/devices/interface/mac") {
            guest_.macAddresses.push_back(toLower(attributeText(attributes, "address")));
        }
        if (path != "domain/devices/disk/source") return;
        for (const char* name : {"file", "dev", "name", "volume"}) {
            const std::string source = attributeText(attributes, name);
            if (!source.empty()) return guest_.disks.push_back(source);
        }
    }

    void onText(const std::string&, std::string_view text) override { text_ += text; }

    void onEnd(const std::string& path) override {
        if (path == "domain/name") guest_.name = trim(text_);
        if (path == "domain/uuid") guest_.uuid = cleanUuid(text_);
        if (path == "domain/description") guest_.description = text_;
        if (path == "domain/vcpu") guest_.virtualCpus = parseDecimal(text_);
        if (path == "domain/memory") setMemory();
    }

    bool isDomain() const { return isDomain_; }
    const Guest& guest() const { return guest_; }

  private:
    void setMemory() {
        const auto amount = parseDecimal(text_);
        if (amount && memoryUnit_ != 0 && *amount <= UINT64_MAX / memoryUnit_)
            guest_.memoryBytes = *amount * memoryUnit_;
    }

    Guest guest_;
    std::string text_;
    std::uint64_t memoryUnit_ = 0;
    bool isDomain_ = false;
};

}  // namespace

std::optional<Guest> readLibvirtGuest(const std::string& path) {
    DefinitionReader reader;
    if (!readXmlFile(path, &reader).empty() || !reader.isDomain() || reader.guest().name.empty())
        return std::nullopt;
    return reader.guest();
}

std::vector<Guest> readLibvirtGuests(Machine& machine) {
    std::vector<Guest> guests;
    for (const std::string driver : {"qemu", "lxc", "libxl"}) {
        const std::string directory = "etc/libvirt/" + driver;
        if (!machine.exists(directory)) continue;
        const std::string start = directory + '/';
        const std::string running = "run/libvirt/" + driver + '/';
        for (const std::string& name : machine.list(directory)) {
            const std::string path = start + name;
            if (!endsWith(name, kDefinition)) continue;
            const FileDescriptor file = machine.open(path);
            if (!file.valid()) continue;
            auto guest = readLibvirtGuest(descriptorPath(file));
            if (!guest) {
                machine.sources().malformed(path, 0);
                continue;
            }
            guest->path = path;
            guest->running = machine.exists(std::string(running).append(guest->name).append(".pid"));
            guest->autostart =
                machine.facts(std::string(start).append("autostart/").append(name), false).has_value();
            guests.push_back(std::move(*guest));
        }
    }
    return guests;
}
