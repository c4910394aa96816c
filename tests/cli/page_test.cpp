#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>

#include "cli/group_page.h"
#include "cli/text.h"

namespace {

const Page kFile = {30, false};
const Page kTerminal = {30, true};

// Widths of characters are the locale's business.
class PageLayout : public testing::Test {
  protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }
    void TearDown() override { std::setlocale(LC_CTYPE, "C"); }

    static std::string textOf(const std::vector<Instance>& instances, const Page& page) {
        return toUtf8(inventoryAsText({{5, L"Storage", instances}}, page));
    }
};

}  // namespace

TEST_F(PageLayout, OneInstanceIsAList) {
    EXPECT_EQ("Storage\n  Name       a\n  SizeBytes  1\n",
              textOf({{{L"Name", L"a"}, {L"SizeBytes", L"1"}}}, kFile));
}

TEST_F(PageLayout, SeveralInstancesAreRowsWithNumbersToTheRight) {
    EXPECT_EQ(
        "Storage (2)\n"
        "  Name  SizeBytes\n"
        "  a             1\n"
        "  bb         1000\n",
        textOf({{{L"Name", L"a"}, {L"SizeBytes", L"1"}}, {{L"Name", L"bb"}, {L"SizeBytes", L"1000"}}},
               kFile));
}

TEST_F(PageLayout, WhatAllInstancesShareIsToldOnceExceptTheFirstField) {
    EXPECT_EQ(
        "Storage (2)\n"
        "  Name\n"
        "  a\n"
        "  a\n"
        "  all of them:\n"
        "    Model  M\n",
        textOf({{{L"Name", L"a"}, {L"Model", L"M"}}, {{L"Name", L"a"}, {L"Model", L"M"}}}, kFile));
}

TEST_F(PageLayout, AMissingFieldIsADashAndAnEmptyOneBlank) {
    EXPECT_EQ(
        "Storage (3)\n"
        "  Name  Model  End\n"
        "  a     -      1\n"
        "  b     M      2\n"
        "  c            3\n",
        textOf({{{L"Name", L"a"}, {L"End", L"1"}},
                {{L"Name", L"b"}, {L"Model", L"M"}, {L"End", L"2"}},
                {{L"Name", L"c"}, {L"Model", L""}, {L"End", L"3"}}},
               kFile));
}

TEST_F(PageLayout, ColumnsThatDoNotFitGoOnBelowWithTheFirstRepeated) {
    EXPECT_EQ(
        "Storage (2)\n"
        "  Name  Vendor\n"
        "  a     0123456789+\n"
        "  b     x\n"
        "\n"
        "  Name  Model\n"
        "  a     0123456789+\n"
        "  b     y\n",
        textOf({{{L"Name", L"a"}, {L"Vendor", L"0123456789+"}, {L"Model", L"0123456789+"}},
                {{L"Name", L"b"}, {L"Vendor", L"x"}, {L"Model", L"y"}}},
               kFile));
}

TEST_F(PageLayout, ATerminalGetsTheColumnsThatItHasRoomFor) {
    const auto disk = [](const wchar_t* name, const wchar_t* model, const wchar_t* wwn) -> Instance {
        return {{L"Wwn", wwn}, {L"DeviceName", name}, {L"BusAddress", wwn}, {L"Model", model}};
    };
    EXPECT_EQ(
        "Storage (2)\n"
        "  DeviceName  Model  Wwn\n"
        "  sda         Fast   0123\n"
        "  sdb         Slow   4567\n"
        "  not shown: BusAddress\n",
        textOf({disk(L"sda", L"Fast", L"0123"), disk(L"sdb", L"Slow", L"4567")}, kTerminal));
}

TEST_F(PageLayout, ATerminalCutsTheWidestColumnsFirst) {
    EXPECT_EQ(
        "Storage (2)\n"
        "  DeviceName  Model\n"
        "  sda         abcdefghijklmno\u2026\n"
        "  sdb         x\n",
        textOf({{{L"DeviceName", L"sda"}, {L"Model", L"abcdefghijklmnopqrstuvwxyz"}},
                {{L"DeviceName", L"sdb"}, {L"Model", L"x"}}},
               kTerminal));
}

TEST_F(PageLayout, ATerminalGetsSixLinesOfALongValue) {
    const std::wstring value(1000, L'x');
    const std::string text = textOf({{{L"Edid", value}}}, kTerminal);
    EXPECT_EQ(6 * 30, std::count(text.begin(), text.end(), 'x'));
    EXPECT_NE(std::string::npos, text.find("x\u2026\n"));
    EXPECT_EQ("Storage\n  Edid  " + toUtf8(value) + "\n", textOf({{{L"Edid", value}}}, kFile));
}

TEST_F(PageLayout, AFileGetsLongCellsWhole) {
    EXPECT_EQ(
        "Storage (2)\n"
        "  Name  Model\n"
        "  a     abcdefghijklmnopqrstuvwxyz0123456789\n"
        "  b     x\n",
        textOf({{{L"Name", L"a"}, {L"Model", L"abcdefghijklmnopqrstuvwxyz0123456789"}},
                {{L"Name", L"b"}, {L"Model", L"x"}}},
               kFile));
}

TEST_F(PageLayout, ATerminalWrapsLongValuesOfAListAtBlanks) {
    EXPECT_EQ(
        "Storage\n"
        "  Flags  one two three four\n"
        "         five six\n",
        textOf({{{L"Flags", L"one two three four five six"}}}, kTerminal));
}

TEST_F(PageLayout, ATerminalBreaksAWordThatIsLongerThanALine) {
    EXPECT_EQ(
        "Storage\n"
        "  Id  aaaaaaaaaabbbbbbbbbbcccc\n"
        "      ccccccdddddddddd\n",
        textOf({{{L"Id", L"aaaaaaaaaabbbbbbbbbbccccccccccdddddddddd"}}}, kTerminal));
}

TEST_F(PageLayout, AFileGetsLongValuesOfAListOnOneLine) {
    EXPECT_EQ("Storage\n  Flags  one two three four five six seven eight\n",
              textOf({{{L"Flags", L"one two three four five six seven eight"}}}, kFile));
}

TEST_F(PageLayout, WideCharactersTakeTwoColumns) {
    EXPECT_EQ(
        "Storage (2)\n"
        "  Name  Model\n"
        "  漢字  x\n"
        "  a     y\n",
        textOf({{{L"Name", L"漢字"}, {L"Model", L"x"}}, {{L"Name", L"a"}, {L"Model", L"y"}}}, kFile));
}

TEST_F(PageLayout, GroupsWithoutInstancesAreNamedAtTheEnd) {
    EXPECT_EQ("Memory\n  Note  x\n\nNothing found\n  Video, Modem\n",
              toUtf8(inventoryAsText(
                  {{13, L"Video", {}}, {3, L"Memory", {{{L"Note", L"x"}}}}, {30, L"Modem", {}}}, kFile)));
}
