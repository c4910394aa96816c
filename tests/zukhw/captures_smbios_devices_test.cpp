// What is read of processors, slots and the like from captured firmware tables against what dmidecode prints
// of them.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/text.h"
#include "tests/zukhw/firmware_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

Fields rawFields(FirmwareTable& table) {
    return collectInstances(table.machine, "SMBIOS").at(0);
}

// dmidecode's words for "not known", all of which are an absent field here.
std::string known(const std::string& value) {
    static const std::set<std::string> kUnknown = {"Unknown", "Not Specified", "Not Provided",
                                                   "<OUT OF SPEC>"};
    return kUnknown.count(value) != 0 ? "" : value;
}

std::string hardware(const std::string& value) {
    return isPlaceholder(value) ? "" : value;
}

// "100 MHz" or "1.3 V" as a number of the smaller unit; empty for anything else.
std::string plainNumber(const std::string& text) {
    const std::vector<std::string_view> parts = words(text);
    if (parts.size() != 2 || parts[0].find_first_not_of("0123456789.") != std::string_view::npos) return "";
    const long number = std::lround(std::stod(std::string(parts[0])) * (parts[1] == "V" ? 1000 : 1));
    return number == 0 ? "" : std::to_string(number);
}

// "F2 06 03 00 FF FB EB BF" as the number that it is, the lowest byte first.
std::string idNumber(const std::string& bytes) {
    std::string number;
    for (const std::string_view byte : words(bytes)) number.insert(0, toLower(byte));
    return number.find_first_not_of('0') == std::string::npos ? "" : number;
}

std::string joined(const std::vector<std::string>& parts) {
    std::vector<std::string> given;
    for (const std::string& part : parts) {
        if (!known(part).empty()) given.push_back(part);
    }
    return join(given, " ");
}

class SmbiosDeviceCaptures : public testing::Test {
  protected:
    void SetUp() override { SKIP_WITHOUT_CAPTURES(); }

    template <typename Check>
    static void forEach(Check check) {
        for (const std::string& name : captureNames("smbios")) {
            SCOPED_TRACE(name);
            FirmwareTable table(name);
            check(table);
        }
    }
};

Fields expectedSocket(const DmidecodeBlock& block) {
    Fields fields = {{"SocketDesignation", hardware(block.value("Socket Designation"))},
                     {"SocketType", known(block.value("Upgrade"))}};
    const std::string status = block.value("Status");
    fields["Populated"] = startsWith(status, "Populated") ? "true" : "false";
    if (!startsWith(status, "Populated")) return fields;
    static const std::map<std::string, std::string> kStates = {
        {"Populated, Enabled", "Enabled"},
        {"Populated, Idle", "Idle"},
        {"Populated, Disabled By BIOS", "DisabledByBios"},
        {"Populated, Disabled By User", "DisabledByUser"}};
    fields["Status"] = kStates.at(status);
    fields["Manufacturer"] = hardware(block.value("Manufacturer"));
    fields["Model"] = hardware(block.value("Version"));
    fields["ProcessorId"] = idNumber(block.value("ID"));
    fields["Cores"] = block.value("Core Count");
    fields["CoresEnabled"] = block.value("Core Enabled");
    fields["Threads"] = block.value("Thread Count");
    fields["MaxMHz"] = plainNumber(block.value("Max Speed"));
    fields["CurrentMHz"] = plainNumber(block.value("Current Speed"));
    fields["ExternalClockMHz"] = plainNumber(block.value("External Clock"));
    fields["VoltageMillivolts"] = plainNumber(block.value("Voltage"));  // of several none is the socket's
    fields["SerialNumber"] = hardware(block.value("Serial Number"));
    fields["AssetTag"] = hardware(block.value("Asset Tag"));
    fields["PartNumber"] = hardware(block.value("Part Number"));
    return fields;
}

Fields withoutEmpty(const Fields& fields) {
    Fields given;
    for (const auto& [name, value] : fields) {
        if (!value.empty()) given.emplace(name, value);
    }
    return given;
}

TEST_F(SmbiosDeviceCaptures, HaveTheProcessorsThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::multiset<Fields> expected;
        for (const DmidecodeBlock& block : table.ofType(4))
            expected.insert(withoutEmpty(expectedSocket(block)));
        std::multiset<Fields> found;
        for (const Fields& socket : collectInstances(table.machine, "PhysicalProcessor"))
            found.insert(socket);
        EXPECT_EQ(expected, found);
    });
}

// The type of a slot without the width of its data, in the standard's words, of which dmidecode shortens
// some.
std::string slotType(std::string type) {
    const bool isWide = type[0] == 'x' || type.find("-bit ") != std::string::npos;
    if (isWide) type = type.substr(type.find(' ') + 1);
    static constexpr std::pair<const char*, const char*> kWords[] = {
        {"PCI Express 3 ", "PCI Express Gen 3 "},
        {"AGP 8x", "AGP 8X"},
        {"AGP 4x", "AGP 4X"},
        {"PCI-66", "PCI - 66MHz Capable"},
        {"Memory Card", "Memory Card Slot"},
        {"Processor Card", "Processor Card Slot"},
        {"I/O Riser Card", "I/O Riser Card Slot"}};
    for (const auto& [shortened, word] : kWords) {
        const std::size_t at = type.find(shortened);
        if (at != std::string::npos) return type.replace(at, std::string_view(shortened).size(), word);
    }
    return type;
}

TEST_F(SmbiosDeviceCaptures, HaveTheSlotsThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::vector<std::string> slots;
        for (const DmidecodeBlock& block : table.ofType(9)) {
            // All bits of bus and function are set where there is none.
            const std::string address = block.value("Bus Address");
            slots.push_back(joined({block.value("Designation"), slotType(block.value("Type")),
                                    block.value("Current Usage"), block.value("Length"),
                                    endsWith(address, "ff:1f.7") ? "" : address}));
        }
        EXPECT_EQ(join(slots, "; "), valueOf(rawFields(table), "Slots"));
    });
}

TEST_F(SmbiosDeviceCaptures, HaveThePortsThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::vector<std::string> ports;
        for (const DmidecodeBlock& block : table.ofType(8)) {
            const std::string internal = known(block.value("Internal Reference Designator"));
            const std::string external = known(block.value("External Reference Designator"));
            const bool both = !internal.empty() && !external.empty();
            ports.push_back(joined({internal + (both ? "/" : "") + external, block.value("Port Type")}));
        }
        EXPECT_EQ(join(ports, "; "), valueOf(rawFields(table), "PortConnectors"));
    });
}

TEST_F(SmbiosDeviceCaptures, HaveTheOnboardDevicesThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::vector<std::string> devices;
        for (const DmidecodeBlock& block : table.ofType(41)) {
            devices.push_back(joined({block.value("Reference Designation"), block.value("Type"),
                                      toLower(block.value("Status")), block.value("Bus Address")}));
        }
        const bool isNew = !devices.empty();
        for (const DmidecodeBlock& block : table.ofType(10)) {
            for (std::size_t i = 0; !isNew && i + 2 < block.lines.size(); i += 3) {
                devices.push_back(joined(
                    {block.lines[i + 2].second, block.lines[i].second, toLower(block.lines[i + 1].second)}));
            }
        }
        EXPECT_EQ(join(devices, "; "), valueOf(rawFields(table), "OnboardDevices"));
    });
}

TEST_F(SmbiosDeviceCaptures, HaveTheStringsThatDmidecodePrints) {
    static constexpr std::pair<unsigned, const char*> kLists[] = {{11, "OemStrings"},
                                                                  {12, "SystemConfigOptions"}};
    forEach([](FirmwareTable& table) {
        const Fields raw = rawFields(table);
        for (const auto& [type, field] : kLists) {
            std::vector<std::string> strings;
            for (const DmidecodeBlock& block : table.ofType(type)) {
                for (const auto& [key, value] : block.lines) {
                    if (!value.empty()) strings.push_back(value);
                }
            }
            EXPECT_EQ(join(strings, "; "), valueOf(raw, field)) << field;
        }
        const std::vector<DmidecodeBlock> languages = table.ofType(13);
        const std::string current =
            languages.empty() ? "" : known(languages[0].value("Currently Installed Language"));
        EXPECT_NE(std::string::npos, valueOf(raw, "BiosLanguages").find(current));
    });
}

TEST_F(SmbiosDeviceCaptures, HaveTheStatesThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        const Fields raw = rawFields(table);
        const auto first = [&](unsigned type, const char* key) {
            const std::vector<DmidecodeBlock> blocks = table.ofType(type);
            return blocks.empty() ? "" : known(blocks[0].value(key));
        };
        EXPECT_EQ(first(32, "Status"), valueOf(raw, "BootStatus"));
        const std::string interface = first(38, "Interface Type");
        EXPECT_EQ(interface.substr(0, interface.find(' ')), valueOf(raw, "IpmiInterface"));
        EXPECT_EQ(first(16, "Error Correction Type"), valueOf(raw, "MemoryErrorCorrection"));
        const std::vector<std::string> rom = [&] {
            const std::string text = first(0, "ROM Size");
            std::vector<std::string> parts;
            for (const std::string_view word : words(text)) parts.emplace_back(word);
            return parts;
        }();
        if (rom.size() == 2) {
            const std::uint64_t unit = rom[1] == "MB" ? 1U << 20 : 1U << 10;
            EXPECT_EQ(std::to_string(parseDecimal(rom[0]).value_or(0) * unit), valueOf(raw, "BiosRomBytes"));
        }
        std::vector<std::string> settings;
        for (const char* name :
             {"Power-On Password", "Keyboard Password", "Administrator Password", "Front Panel Reset"}) {
            const std::string state = first(24, (std::string(name) + " Status").c_str());
            if (!state.empty()) settings.push_back(std::string(name) + '=' + state);
        }
        EXPECT_EQ(join(settings, "; "), valueOf(raw, "SecuritySettings"));
    });
}

TEST_F(SmbiosDeviceCaptures, HaveThePowerSuppliesThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::vector<std::string> supplies;
        std::size_t present = 0;
        for (const DmidecodeBlock& block : table.ofType(39)) {
            present += startsWith(block.value("Status"), "Present") ? 1 : 0;
            supplies.push_back(joined({block.value("Location"), block.value("Manufacturer"),
                                       block.value("Model Part Number"), block.value("Serial Number"),
                                       plainNumber(block.value("Max Power Capacity"))}));
        }
        EXPECT_EQ(join(supplies, "; "), valueOf(rawFields(table), "PowerSupplies"));
        const std::string counted =
            valueOf(collectInstances(table.machine, "SystemEnclosure").at(0), "PowerSupplies");
        EXPECT_EQ(supplies.empty() ? "" : std::to_string(present), counted);
    });
}

// By the handle of the module that dmidecode names.
TEST_F(SmbiosDeviceCaptures, HaveTheAddressesOfModulesThatDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::map<std::string, const DmidecodeBlock*> mapped;
        const std::vector<DmidecodeBlock> maps = table.ofType(20);
        std::set<std::string> several;  // a module may be mapped in parts
        for (const DmidecodeBlock& block : maps) {
            const std::string handle = toLower(block.value("Physical Device Handle")).substr(2);
            if (!mapped.emplace(handle, &block).second) several.insert(handle);
        }
        for (const Fields& module : collectInstances(table.machine, "MemoryModules")) {
            const auto block = mapped.find(module.at("Handle"));
            if (block == mapped.end() || several.count(module.at("Handle")) != 0) continue;
            if (module.at("Populated") != "true") continue;
            const auto number = [&](const char* key) {
                const std::string text = block->second->value(key);
                return std::to_string(parseHex(text.substr(2)).value_or(0));
            };
            EXPECT_EQ(number("Starting Address"), valueOf(module, "MappedStart")) << module.at("Handle");
            EXPECT_EQ(number("Ending Address"), valueOf(module, "MappedEnd")) << module.at("Handle");
        }
    });
}

TEST_F(SmbiosDeviceCaptures, HaveThePointingDevicesThatDmidecodePrints) {
    static const std::map<std::string, std::string> kKinds = {
        {"Track Point", "TrackPoint"}, {"Touch Pad", "Touchpad"}, {"Mouse", "Mouse"}};
    forEach([](FirmwareTable& table) {
        const std::vector<DmidecodeBlock> expected = table.ofType(21);
        const std::vector<Fields> found = collectInstances(table.machine, "PointingDevice");
        ASSERT_EQ(expected.size(), found.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_EQ(kKinds.at(expected[i].value("Type")), valueOf(found[i], "Kind"));
            EXPECT_EQ(toLower(expected[i].value("Interface")), toLower(valueOf(found[i], "Interface")));
            EXPECT_EQ(expected[i].value("Buttons"), valueOf(found[i], "Buttons"));
        }
    });
}

// Every structure in the text, by its type, and dmidecode's own count of them.
TEST_F(SmbiosDeviceCaptures, HaveAsManyStructuresAsDmidecodePrints) {
    forEach([](FirmwareTable& table) {
        std::map<unsigned, unsigned> counts;
        for (const DmidecodeBlock& block : table.blocks) ++counts[block.type];
        std::vector<std::string> types;
        for (const auto& [type, count] : counts)
            types.push_back(std::to_string(type) + ':' + std::to_string(count));
        EXPECT_EQ(join(types, "; "), valueOf(rawFields(table), "StructureTypes"));
    });
}

}  // namespace
