#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

constexpr char kGroup[] = "PCSystemParams";

std::string valueOf(const std::string& tree, const std::string& field) {
    TestMachine machine(tree);
    const std::vector<Fields> all = collectInstances(*machine, kGroup);
    return all.empty() ? "" : ::valueOf(all[0], field);
}

TEST(PCSystemParams, WritesTheFirmwaresDateAsIsoDoes) {
    const std::pair<const char*, const char*> dates[] = {
        {"05/21/2019", "2019-05-21"}, {"06/06/98", "1998-06-06"}, {"13/01/2019", ""},
        {"2019-05-21", ""},           {"05/21/019", ""},          {"05/xx/2019", ""},
    };
    for (const auto& [raw, iso] : dates) {
        EXPECT_EQ(iso, valueOf("sys/class/dmi/id/bios_date: "s + raw + "\n", "BiosDate")) << raw;
    }
}

TEST(PCSystemParams, ReadsReleasesOfTheTable) {
    const std::string fields = std::string(0x10, '\0') + "\x05\x0C\xFF\xFF"s;
    const std::string tree = "sys/firmware/dmi/tables/DMI = " + hexOf(structure(0, 0, fields, {})) + "\n";
    EXPECT_EQ("5.12", valueOf(tree, "BiosRelease"));
    EXPECT_EQ("", valueOf(tree, "EmbeddedControllerRelease"));
}

TEST(PCSystemParams, ReadsReleasesThatTheKernelShows) {
    EXPECT_EQ("2.10", valueOf("sys/class/dmi/id/bios_release: 2.10\n", "BiosRelease"));
    EXPECT_EQ("", valueOf("sys/class/dmi/id/bios_release: .2\n", "BiosRelease"));
    EXPECT_EQ("", valueOf("sys/class/dmi/id/bios_release: 2.1.0\n", "BiosRelease"));
}

TEST(PCSystemParams, ReadsUefiFlags) {
    const std::string variable =
        "sys/firmware/efi/efivars/SecureBoot-8be4df61-93ca-11d2-aa0d-00e098032b8c = ";
    EXPECT_EQ("true", valueOf(variable + "06 00 00 00 01\n", "SecureBoot"));
    EXPECT_EQ("false", valueOf(variable + "06 00 00 00 00\n", "SecureBoot"));
    EXPECT_EQ("", valueOf(variable + "06 00 00 00\n", "SecureBoot"));
    EXPECT_EQ("UEFI", valueOf(variable + "06 00 00 00 00\n", "FirmwareType"));
}

TEST(PCSystemParams, TellsTheKindOfFirmwareOnlyByEvidence) {
    const std::string x86 = "proc/sys/kernel/arch: x86_64\n";
    EXPECT_EQ("BIOS", valueOf(x86 + "sys/firmware/acpi/pm_profile: 0\n", "FirmwareType"));
    EXPECT_EQ("", valueOf(x86 + "sys/firmware/\n", "FirmwareType"));  // as containers see it
    EXPECT_EQ("", valueOf("proc/sys/kernel/arch: s390x\nsys/firmware/ipl/loadparm: x\n", "FirmwareType"));
    EXPECT_EQ("DeviceTree", valueOf("sys/firmware/devicetree/base/model = 58 00\n", "FirmwareType"));
}

TEST(PCSystemParams, ListsTablesAndNotTheirDirectories) {
    EXPECT_EQ("DSDT; FACP; SSDT1; SSDT2; SSDT10",
              valueOf("sys/firmware/acpi/tables/SSDT10: x\nsys/firmware/acpi/tables/SSDT2: x\n"
                      "sys/firmware/acpi/tables/SSDT1: x\nsys/firmware/acpi/tables/FACP: x\n"
                      "sys/firmware/acpi/tables/DSDT: x\nsys/firmware/acpi/tables/dynamic/SSDT3: x\n",
                      "AcpiTables"));
    EXPECT_EQ("Mobile", valueOf("sys/firmware/acpi/pm_profile: 2\n", "PowerProfile"));
    EXPECT_EQ("", valueOf("sys/firmware/acpi/pm_profile: 0\n", "PowerProfile"));
}

const std::string kBattery = "sys/class/power_supply/BAT0/";

TEST(PCSystemParams, DescribesTheSystemsBatteries) {
    TestMachine machine(
        kBattery + "type: Battery\n" + kBattery + "manufacturer: Maker\n" + kBattery + "model_name: M-1\n" +
        kBattery + "technology: Li-ion\n" + kBattery + "energy_full_design: 57020000\n" + kBattery +
        "energy_full: 48500000\n" + kBattery +
        "cycle_count: 0\n"
        "sys/class/power_supply/BAT1/type: Battery\nsys/class/power_supply/BAT1/model_name: M-2\n"
        "sys/class/power_supply/hidpp_battery_0/type: Battery\n"
        "sys/class/power_supply/hidpp_battery_0/scope: Device\n"
        "sys/class/power_supply/AC/type: Mains\nsys/class/power_supply/AC/online: 1\n");
    const Fields expected = {
        {"BatteryPresent", "true"},
        {"Battery1Manufacturer", "Maker"},
        {"Battery1Model", "M-1"},
        {"Battery1Technology", "Li-ion"},
        {"Battery1DesignMilliwattHours", "57020"},
        {"Battery1FullMilliwattHours", "48500"},
        {"Battery1Cycles", "0"},
        {"Battery2Model", "M-2"},
        {"AcOnline", "true"},
    };
    EXPECT_EQ(expected, collectOne(machine, kGroup));
}

TEST(PCSystemParams, ReckonsEnergyFromChargeAndVoltage) {
    const std::string tree = kBattery + "type: Battery\n" + kBattery + "charge_full_design: 5000000\n";
    EXPECT_EQ("57000",
              valueOf(tree + kBattery + "voltage_min_design: 11400000\n", "Battery1DesignMilliwattHours"));
    EXPECT_EQ("39407",  // of the charge alone in milliampere hours, 39398
              valueOf(kBattery + "type: Battery\n" + kBattery + "charge_full: 3456789\n" + kBattery +
                          "voltage_min_design: 11400000\n",
                      "Battery1FullMilliwattHours"));
    EXPECT_EQ("", valueOf(tree, "Battery1DesignMilliwattHours"));
    EXPECT_EQ("", valueOf(kBattery + "type: Battery\n" + kBattery + "charge_full: 18446744073709551615\n" +
                              kBattery + "voltage_min_design: 18446744073709551615\n",
                          "Battery1FullMilliwattHours"));
}

TEST(PCSystemParams, KnowsThatThereIsNoBattery) {
    EXPECT_EQ("false", valueOf("sys/class/power_supply/\n", "BatteryPresent"));
    EXPECT_EQ("", valueOf("sys/class/net/\n", "BatteryPresent"));
}

TEST(PCSystemParams, NamesSoundCards) {
    EXPECT_EQ("HDA Intel PCH; USB Audio",
              valueOf("proc/asound/cards:\n\t 0 [PCH            ]: HDA-Intel - HDA Intel PCH\n"
                      "\t                      HDA Intel PCH at 0xf7e30000 irq 31\n"
                      "\t 1 [Audio          ]: USB-Audio - USB Audio\n",
                      "SoundDevices"));
}

TEST(PCSystemParams, TakesTheLockdownInForce) {
    EXPECT_EQ("integrity",
              valueOf("sys/kernel/security/lockdown: none [integrity] confidentiality\n", "KernelLockdown"));
    EXPECT_EQ("", valueOf("sys/kernel/security/lockdown: ]none[\n", "KernelLockdown"));
}

TEST(PCSystemParams, PrefersTheKernelsWordOnTheTpm) {
    const std::string table =
        "sys/firmware/dmi/tables/DMI = " + hexOf(structure(43, 0, "MAKE\x02\x00"s, {})) + "\n";
    EXPECT_EQ("2.0", valueOf(table, "TpmVersion"));
    EXPECT_EQ("2", valueOf(table + "sys/class/tpm/tpm0/tpm_version_major: 2\n", "TpmVersion"));
}

}  // namespace
