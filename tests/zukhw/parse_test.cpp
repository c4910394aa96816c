#include "scanners/zukhw/parse.h"

#include <gtest/gtest.h>

namespace {

constexpr std::uint64_t kMax = UINT64_MAX;
using Number = std::optional<std::uint64_t>;
using Numbers = std::optional<std::vector<unsigned>>;

struct NumberCase {
    const char* text;
    Number expected;
};

TEST(ParseDecimal, TakesWholeNumbersOnly) {
    const NumberCase cases[] = {
        {"0", 0},
        {" 42\n", 42},
        {"18446744073709551615", kMax},
        {"18446744073709551616", {}},
        {"", {}},
        {"-1", {}},
        {"+1", {}},
        {"1 2", {}},
        {"0x10", {}},
        {"7 kB", {}},
    };
    for (const NumberCase& c : cases) EXPECT_EQ(c.expected, parseDecimal(c.text)) << c.text;
}

TEST(ParseHex, TakesThemWithAndWithoutPrefix) {
    const NumberCase cases[] = {{"0x1af4", 0x1AF4}, {"FF", 255}, {"0x", {}}, {"xyz", {}}, {"", {}}};
    for (const NumberCase& c : cases) EXPECT_EQ(c.expected, parseHex(c.text)) << c.text;
}

TEST(ParseKibibytes, RefusesOtherUnitsAndOverflow) {
    const NumberCase cases[] = {
        {"  16318200 kB", 16709836800}, {"12 MB", {}}, {"", {}}, {"18446744073709551615 kB", {}}};
    for (const NumberCase& c : cases) EXPECT_EQ(c.expected, parseKibibytes(c.text)) << c.text;
}

TEST(ParseSize, KnowsTheKernelsUnits) {
    const NumberCase cases[] = {{"32K", 32768}, {"8M", 8388608}, {"1G", 1073741824}, {"512", 512}, {"K", {}},
                                {"1T", {}},     {"", {}}};
    for (const NumberCase& c : cases) EXPECT_EQ(c.expected, parseSize(c.text)) << c.text;
}

struct ListCase {
    const char* text;
    Numbers expected;
};

TEST(ParseCpuList, GivesEachNumberOnceInOrder) {
    const std::vector<unsigned> none;
    const ListCase cases[] = {
        {"0", {{0}}},
        {"0-3,8", {{0, 1, 2, 3, 8}}},
        {"8,0-1,0", {{0, 1, 8}}},
        {"", none},
        {"3-1", {}},
        {"0-", {}},
        {"a", {}},
        {"0,,1", {}},
        {"0-4294967295", {}},
        {"65536", {}},
    };
    for (const ListCase& c : cases) EXPECT_EQ(c.expected, parseCpuList(c.text)) << c.text;
}

TEST(ParseCpuMask, CountsFromTheLastGroup) {
    const ListCase cases[] = {
        {"0000000f", {{0, 1, 2, 3}}}, {"00000001,00000000", {{32}}}, {"1ffffffff", {}}, {"x", {}}};
    for (const ListCase& c : cases) EXPECT_EQ(c.expected, parseCpuMask(c.text)) << c.text;
}

TEST(FindValue, TakesTheFirstLineWithExactlyThatKey) {
    const char* text = "MemTotalX: 1\nMemTotal:   2 kB\nMemTotal: 3\n";
    EXPECT_EQ("2 kB", findValue(text, "MemTotal", ':'));
    EXPECT_EQ(std::nullopt, findValue(text, "Total", ':'));
}

}  // namespace
