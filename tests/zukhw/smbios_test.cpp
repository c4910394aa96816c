#include "scanners/zukhw/smbios.h"

#include <gtest/gtest.h>

#include "tests/zukhw/smbios_table.h"
#include "tests/zukhw/test_machine.h"

namespace {

using namespace std::string_literals;

std::string treeWith(const std::string& table, const std::string& entryPoint = "") {
    std::string tree = "sys/firmware/dmi/tables/DMI = " + hexOf(table) + "\n";
    if (!entryPoint.empty())
        tree += "sys/firmware/dmi/tables/smbios_entry_point = " + hexOf(entryPoint) + "\n";
    return tree;
}

TEST(Smbios, WalksStructuresAndTheirStrings) {
    const std::string table = structure(1, 0x0100, "\x01\x02\x00\x03"s, {"Maker", "Product"}) +
                              structure(11, 0x0B00, "\x02"s, {"one", "two"}) + structure(127, 0xFFFE, "", {});
    TestMachine machine(treeWith(table));
    const Smbios& smbios = machine->shared<Smbios>();
    ASSERT_EQ(3U, smbios.structures().size());
    const SmbiosStructure& system = *smbios.first(1);
    EXPECT_EQ(0x0100U, system.handle());
    EXPECT_EQ("Maker", system.string(4));
    EXPECT_EQ("Product", system.string(5));
    EXPECT_EQ("", system.string(6));  // number 0: not present
    EXPECT_EQ("", system.string(7));  // past the last string
    EXPECT_EQ("", system.string(8));  // past the structure
    EXPECT_EQ((std::vector<std::string_view>{"one", "two"}), smbios.first(11)->strings());
    EXPECT_EQ(std::nullopt, smbios.version());
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(Smbios, ReadsFieldsOnlyWithinTheStructure) {
    TestMachine machine(treeWith(structure(200, 1, "\x01\x02\x03\x04\x05\x06\x07\x08"s, {})));
    const SmbiosStructure& s = *machine->shared<Smbios>().first(200);
    EXPECT_EQ(0x08, s.byte(11));
    EXPECT_EQ(std::nullopt, s.byte(12));
    EXPECT_EQ(0x0807, s.word(10));
    EXPECT_EQ(std::nullopt, s.word(11));
    EXPECT_EQ(0x04030201U, s.dword(4));
    EXPECT_EQ(0x0807060504030201U, s.qword(4));
    EXPECT_EQ(std::nullopt, s.qword(5));
    EXPECT_EQ(std::nullopt, s.byte(SIZE_MAX));
    EXPECT_EQ("\x07\x08", s.bytes(10, 2));
    EXPECT_EQ("", s.bytes(10, 3));
}

TEST(Smbios, KnowsBothEntryPoints) {
    const std::string table = structure(127, 0, "", {});
    TestMachine two(treeWith(table, "_SM_\x00\x1F\x02\x07\x00\x00"s));
    EXPECT_EQ(0x0207U, two->shared<Smbios>().version());
    TestMachine three(treeWith(table, "_SM3_\x00\x18\x03\x05\x00"s));
    EXPECT_EQ(0x0305U, three->shared<Smbios>().version());
    TestMachine cut(treeWith(table, "_SM3_\x00\x18\x03"s));
    EXPECT_EQ(std::nullopt, cut->shared<Smbios>().version());
}

TEST(Smbios, CorrectsVersionsThatThereAreNot) {
    const std::string table = structure(127, 0, "", {});
    for (const auto& [told, meant] : {std::pair('\x1F', 0x0203U), {'\x21', 0x0203U}, {'\x33', 0x0206U}}) {
        TestMachine machine(treeWith(table, "_SM_\x00\x1F\x02"s + told + "\x00\x00"s));
        EXPECT_EQ(meant, machine->shared<Smbios>().version());
    }
}

TEST(Smbios, LeavesOutFieldsThatItsVersionDoesNotKnow) {
    const std::string device = structure(17, 1, std::string(0x22 - 4, '\x11'), {});
    TestMachine old(treeWith(device, "_SM_\x00\x1F\x02\x03\x00\x00"s));
    EXPECT_EQ(0x1111, old->shared<Smbios>().first(17)->word(0x15));
    EXPECT_EQ(std::nullopt, old->shared<Smbios>().first(17)->byte(0x1B));
    TestMachine newer(treeWith(device, "_SM_\x00\x1F\x02\x07\x00\x00"s));
    EXPECT_EQ(0x1111, newer->shared<Smbios>().first(17)->word(0x20));
}

struct BrokenTable {
    const char* why;
    std::string bytes;
    std::size_t structures;
    const char* item;  // what the account of the scan tells
};

TEST(Smbios, StopsAtWhatIsBrokenAndKeepsWhatWasWhole) {
    const std::string whole = structure(1, 1, "\x01"s, {"x"});
    const BrokenTable tables[] = {
        {"length below 4", whole + "\x02\x03\x00\x00\x00\x00"s, 1, "/sys/firmware/dmi/tables/DMI@8"},
        {"length past the end", whole + "\x02\xFF\x00\x00\x00\x00"s, 1, "/sys/firmware/dmi/tables/DMI@8"},
        {"header past the end", whole + "\x02\x04"s, 1, "/sys/firmware/dmi/tables/DMI@8"},
        {"strings without end", whole + "\x02\x04\x00\x00strings"s, 1, "/sys/firmware/dmi/tables/DMI@8"},
    };
    for (const BrokenTable& table : tables) {
        TestMachine machine(treeWith(table.bytes));
        EXPECT_EQ(table.structures, machine->shared<Smbios>().structures().size()) << table.why;
        ASSERT_EQ(1U, machine->sources().malformedItems().size()) << table.why;
        EXPECT_EQ(table.item, machine->sources().malformedItems()[0]) << table.why;
    }
}

TEST(Smbios, StopsAtTheEndOfTableStructure) {
    TestMachine machine(treeWith("\x7F\x04\x00\x00"s + structure(1, 1, "", {})));
    EXPECT_EQ(1U, machine->shared<Smbios>().structures().size());
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(Smbios, FallsBackToTheKernelsEntries) {
    TestMachine machine("sys/firmware/dmi/entries/1-0/raw = " + hexOf(structure(1, 1, "\x01"s, {"A"})) +
                        "\nsys/firmware/dmi/entries/1-0/position: 1\nsys/firmware/dmi/entries/2-0/raw = " +
                        hexOf(structure(2, 2, "\x01"s, {"B"})) +
                        "\nsys/firmware/dmi/entries/2-0/position: 0\n");
    const Smbios& smbios = machine->shared<Smbios>();
    EXPECT_EQ(Smbios::Source::Entries, smbios.source());
    ASSERT_EQ(2U, smbios.structures().size());
    EXPECT_EQ(2U, smbios.structures()[0].type());
}

TEST(Smbios, TakesTheEntriesThatACopyHas) {
    TestMachine machine(
        "sys/firmware/dmi/entries/0-0/position: 0\n"
        "sys/firmware/dmi/entries/1-0/raw = " +
        hexOf(structure(1, 1, "\x01"s, {"A"})) + "\n");
    EXPECT_EQ(1U, machine->shared<Smbios>().structures().size());
}

TEST(Smbios, FallsBackToTheStringsThatEverybodyMayRead) {
    TestMachine machine("sys/class/dmi/id/sys_vendor: Maker\nsys/class/dmi/id/product_name: Product\n");
    const Smbios& smbios = machine->shared<Smbios>();
    EXPECT_FALSE(smbios.available());
    EXPECT_EQ("Maker", smbios.string(1, 0x04));
    EXPECT_EQ("Product", smbios.string(1, 0x05));
    EXPECT_EQ("", smbios.string(1, 0x07));
}

TEST(Smbios, WritesUuidsByTheVersionsByteOrder) {
    const std::string bytes = "\x00\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF"s;
    EXPECT_EQ("33221100-5544-7766-8899-aabbccddeeff", smbiosUuid(bytes, 0x0206));
    EXPECT_EQ("00112233-4455-6677-8899-aabbccddeeff", smbiosUuid(bytes, 0x0205));
    EXPECT_EQ("", smbiosUuid("short", 0x0206));
}

}  // namespace
