#include "cli/field_kind.h"

#include <gtest/gtest.h>

namespace {

struct KindCase {
    const wchar_t* group;
    const wchar_t* name;
    FieldKind kind;
};

const KindCase kCases[] = {
    {L"Memory", L"TotalBytes", FieldKind::Number},
    {L"Processor", L"BogoMips", FieldKind::Number},
    {L"Processor", L"Online", FieldKind::Flag},
    {L"Partition", L"MountPoints", FieldKind::List},
    {L"OperatingSystem", L"VersionId", FieldKind::Text},  // "12" here, "9.4" there
    {L"PCIDevice", L"VendorId", FieldKind::Text},         // hexadecimal: its neighbour may be "10de"
    {L"Monitor", L"SerialCode", FieldKind::Text},         // a serial number of digits
    {L"Anything", L"New", FieldKind::Text},
    // One name, several kinds.
    {L"Processor", L"Family", FieldKind::Number},
    {L"ComponentID", L"Family", FieldKind::Text},
    {L"Memory", L"NumaNodes", FieldKind::Number},
    {L"PhysicalProcessor", L"NumaNodes", FieldKind::NumberList},
    {L"SMBIOS", L"PowerSupplies", FieldKind::List},
    {L"SystemEnclosure", L"PowerSupplies", FieldKind::Number},
    {L"Printer", L"Duplex", FieldKind::Flag},
    {L"NetworkAdapter", L"Duplex", FieldKind::Text},
    {L"PhysicalProcessor", L"Flags", FieldKind::Words},
};

struct NumberCase {
    const wchar_t* text;
    bool isNumber;
};

const NumberCase kNumbers[] =
    {
        {L"0", true},       {L"3200", true},    {L"-60", true},
        {L"4800.00", true}, {L"012", false},  // no number has leading zeros
        {L"", false},       {L"-", false},      {L"1.", false},
        {L".5", false},     {L"1e5", false},    {L" 1", false},
        {L"+1", false},     {L"\u0661", false},  // a digit, but not one of JSON's
};

}  // namespace

TEST(FieldKind, ComesFromGroupAndName) {
    for (const KindCase& c : kCases) {
        EXPECT_EQ(c.kind, fieldKind(c.group, c.name)) << testing::PrintToString(c.name);
    }
}

TEST(FieldKind, ANumberIsPlainAndDecimal) {
    for (const NumberCase& c : kNumbers)
        EXPECT_EQ(c.isNumber, isNumber(c.text)) << testing::PrintToString(c.text);
}

TEST(FieldKind, ItemsOfAListMayHoldBlanksAndSemicolons) {
    using Items = std::vector<std::wstring_view>;
    EXPECT_EQ((Items{L"one two", L"a;b", L"c"}), listItems(FieldKind::List, L"one two; a;b; c"));
    EXPECT_EQ((Items{L"fpu", L"vme"}), listItems(FieldKind::Words, L"fpu vme"));
    EXPECT_EQ((Items{L"alone"}), listItems(FieldKind::List, L"alone"));
    EXPECT_EQ((Items{L"mds=Clear buffers; SMT on; more", L"srbds=x"}),
              listItems(FieldKind::PairList, L"mds=Clear buffers; SMT on; more; srbds=x"));
}
