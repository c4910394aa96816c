// What is read from captured firmware tables against what dmidecode prints of them.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/text.h"
#include "tests/zukhw/firmware_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using Values = std::map<std::string, std::string>;

std::vector<Values> valuesOf(const FirmwareTable& table, unsigned type) {
    std::vector<Values> found;
    for (const DmidecodeBlock& block : table.ofType(type)) found.push_back(block.values);
    return found;
}

// dmidecode's words for "not known", all of which are an absent field here.
std::string known(const std::string& value) {
    for (const char* word : {"Unknown", "Not Specified", "None", "<OUT OF SPEC>", "No Module Installed"}) {
        if (value == word) return "";
    }
    return value;
}

std::string hardware(const std::string& value) {
    return isPlaceholder(value) ? "" : value;
}

// "16 GB", "2667 MT/s", "1.2 V", "64 bits" as a plain number of the smaller unit.
std::string plainNumber(const std::string& text) {
    static const std::map<std::string, double> kUnits = {
        {"kB", 1024.0}, {"MB", 1048576.0}, {"GB", 1073741824.0}, {"TB", 1099511627776.0}, {"V", 1000.0}};
    std::istringstream words(text);
    double value = 0;
    std::string unit;
    if (!(words >> value >> unit)) return "";
    const auto factor = kUnits.find(unit);
    return std::to_string(std::llround(value * (factor == kUnits.end() ? 1.0 : factor->second)));
}

void expectModule(const Values& expected, const Fields& module) {
    EXPECT_EQ(hardware(valueOf(expected, "Locator")), valueOf(module, "Locator"));
    EXPECT_EQ(hardware(valueOf(expected, "Bank Locator")), valueOf(module, "BankLocator"));
    EXPECT_EQ(known(valueOf(expected, "Form Factor")), valueOf(module, "FormFactor"));
    const bool empty = valueOf(expected, "Size") == "No Module Installed";
    EXPECT_EQ(empty ? "false" : "true", valueOf(module, "Populated"));
    if (empty) return;
    static constexpr std::pair<const char*, const char*> kNumbers[] = {
        {"Size", "SizeBytes"},
        {"Total Width", "TotalWidthBits"},
        {"Data Width", "DataWidthBits"},
        {"Speed", "MaxSpeedMTs"},
        {"Configured Memory Speed", "ConfiguredSpeedMTs"},
        {"Minimum Voltage", "MinVoltageMillivolts"},
        {"Maximum Voltage", "MaxVoltageMillivolts"},
        {"Configured Voltage", "ConfiguredVoltageMillivolts"},
        {"Non-Volatile Size", "NonVolatileBytes"},
        {"Volatile Size", "VolatileBytes"},
    };
    for (const auto& [key, field] : kNumbers) {
        const std::string value = valueOf(expected, key);
        const bool isSize = std::string(key).find("olatile Size") != std::string::npos;
        EXPECT_EQ(isSize && value == "None" ? "0" : plainNumber(value), valueOf(module, field)) << field;
    }
    static constexpr std::pair<const char*, const char*> kStrings[] = {
        {"Manufacturer", "Manufacturer"},        {"Part Number", "PartNumber"},
        {"Serial Number", "SerialNumber"},       {"Asset Tag", "AssetTag"},
        {"Firmware Version", "FirmwareVersion"},
    };
    for (const auto& [key, field] : kStrings) {
        EXPECT_EQ(hardware(valueOf(expected, key)), valueOf(module, field)) << field;
    }
    EXPECT_EQ(known(valueOf(expected, "Type")), valueOf(module, "Type"));
    EXPECT_EQ(known(valueOf(expected, "Memory Technology")), valueOf(module, "Technology"));
    EXPECT_EQ(known(valueOf(expected, "Rank")), valueOf(module, "Rank"));
}

void expectChassis(const Values& expected, const Fields& chassis) {
    for (const char* key : {"Manufacturer", "Version"}) {
        EXPECT_EQ(hardware(valueOf(expected, key)), valueOf(chassis, key)) << key;
    }
    EXPECT_EQ(hardware(valueOf(expected, "Serial Number")), valueOf(chassis, "SerialNumber"));
    EXPECT_EQ(hardware(valueOf(expected, "Asset Tag")), valueOf(chassis, "AssetTag"));
    EXPECT_EQ(toLower(known(valueOf(expected, "Type"))), toLower(valueOf(chassis, "Type")));
    EXPECT_EQ(valueOf(expected, "Lock") == "Present" ? "true" : "false", valueOf(chassis, "Lock"));
    EXPECT_EQ(known(valueOf(expected, "Boot-up State")), valueOf(chassis, "BootState"));
    EXPECT_EQ(known(valueOf(expected, "Power Supply State")), valueOf(chassis, "PowerSupplyState"));
    EXPECT_EQ(known(valueOf(expected, "Thermal State")), valueOf(chassis, "ThermalState"));
    const std::string cords = valueOf(expected, "Number Of Power Cords");
    EXPECT_EQ(cords == "Unspecified" ? "" : cords, valueOf(chassis, "PowerCords"));
}

class SmbiosCaptures : public testing::Test {
  protected:
    void SetUp() override { SKIP_WITHOUT_CAPTURES(); }
};

TEST_F(SmbiosCaptures, HaveTheModulesThatDmidecodePrints) {
    for (const std::string& name : captureNames("smbios")) {
        SCOPED_TRACE(name);
        FirmwareTable capture(name);
        const std::vector<Values> expected = valuesOf(capture, 17);
        const std::vector<Fields> modules = collectInstances(capture.machine, "MemoryModules");
        ASSERT_EQ(expected.size(), modules.size());
        for (std::size_t i = 0; i < modules.size(); ++i) expectModule(expected[i], modules[i]);
    }
}

TEST_F(SmbiosCaptures, HaveTheMemoryThatTheModulesAddUpTo) {
    for (const std::string& name : captureNames("smbios")) {
        FirmwareTable capture(name);
        std::uint64_t sum = 0;
        for (const Values& module : valuesOf(capture, 17)) {
            sum += parseDecimal(plainNumber(valueOf(module, "Size"))).value_or(0);
        }
        const std::vector<Fields> memory = collectInstances(capture.machine, "Memory");
        EXPECT_EQ(sum == 0 ? "" : std::to_string(sum),
                  memory.empty() ? "" : valueOf(memory[0], "InstalledBytes"))
            << name;
    }
}

TEST_F(SmbiosCaptures, HaveTheEnclosuresThatDmidecodePrints) {
    for (const std::string& name : captureNames("smbios")) {
        SCOPED_TRACE(name);
        FirmwareTable capture(name);
        const std::vector<Values> expected = valuesOf(capture, 3);
        const std::vector<Fields> enclosures = collectInstances(capture.machine, "SystemEnclosure");
        ASSERT_EQ(expected.size(), enclosures.size());
        for (std::size_t i = 0; i < enclosures.size(); ++i) expectChassis(expected[i], enclosures[i]);
    }
}

// Strings that are not given are no field; dmidecode then says "Not Specified".
std::string given(const std::string& value) {
    return value == "Not Specified" ? "" : value;
}

TEST_F(SmbiosCaptures, HaveTheRawStringsThatDmidecodePrints) {
    struct Row {
        unsigned type;
        const char* key;
        const char* field;
    };
    static constexpr Row kRows[] = {
        {0, "Vendor", "BiosVendor"},
        {0, "Version", "BiosVersion"},
        {0, "Release Date", "BiosReleaseDate"},
        {0, "BIOS Revision", "BiosRelease"},
        {0, "Firmware Revision", "EcRelease"},
        {1, "Manufacturer", "SystemManufacturer"},
        {1, "Product Name", "SystemProductName"},
        {1, "Version", "SystemVersion"},
        {1, "Serial Number", "SystemSerialNumber"},
        {1, "SKU Number", "SystemSku"},
        {1, "Family", "SystemFamily"},
        {2, "Manufacturer", "BoardManufacturer"},
        {2, "Product Name", "BoardProduct"},
        {2, "Serial Number", "BoardSerialNumber"},
        {3, "Serial Number", "ChassisSerialNumber"},
        {38, "Specification Version", "IpmiSpecification"},
    };
    for (const std::string& name : captureNames("smbios")) {
        SCOPED_TRACE(name);
        FirmwareTable capture(name);
        const Fields fields = collectInstances(capture.machine, "SMBIOS").at(0);
        for (const Row& row : kRows) {
            const std::vector<Values> blocks = valuesOf(capture, row.type);
            const std::string expected = blocks.empty() ? "" : given(valueOf(blocks[0], row.key));
            EXPECT_EQ(expected, valueOf(fields, row.field)) << row.field;
        }
        const std::vector<Values> systems = valuesOf(capture, 1);
        const std::string uuid = systems.empty() ? "" : toLower(valueOf(systems[0], "UUID"));
        const bool isSet = uuid.size() == 36;  // dmidecode has words for the others
        EXPECT_TRUE(!isSet || uuid == valueOf(fields, "SystemUuid")) << uuid;
    }
}

}  // namespace
