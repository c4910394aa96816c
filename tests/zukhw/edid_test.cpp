#include "scanners/zukhw/edid.h"

#include <gtest/gtest.h>

#include "tests/zukhw/edid_block.h"

namespace {

using namespace std::string_literals;

constexpr std::size_t kFirstDescriptor = 54;
constexpr std::size_t kSecondDescriptor = 72;
const std::string kVersion13 = "\x01\x03"s;
const std::string kVersion14 = "\x01\x04"s;

// 1920x1080 at 148.5 MHz, 2200 by 1125 with its margins; 520 mm by 290 mm.
const std::string kFullHd = "\x02\x3A\x80\x18\x71\x38\x2D\x40\x58\x2C\x45\x00\x08\x22\x21\x00\x00\x1E"s;

Edid edid(const std::vector<std::pair<std::size_t, std::string>>& parts) {
    return parseEdid(edidBlock(parts)).value();
}

TEST(Edid, ReadsWhoMadeIt) {
    const Edid display = edid({{8, "\x10\xAC\x2A\xF0"s}, {12, "\x39\x30\x00\x00"s}, {18, kVersion13}});
    EXPECT_EQ("DEL", display.makerLetters);
    EXPECT_EQ(0xF02AU, display.productCode);
    EXPECT_EQ(12345U, display.serialCode);
    EXPECT_EQ(1U, display.version);
    EXPECT_EQ(3U, display.revision);
}

TEST(Edid, HasNoMakerWhoseLettersAreNone) {
    EXPECT_EQ("", edid({{8, "\x00\x21"s}}).makerLetters);
    EXPECT_EQ("", edid({{8, "\x7F\xFF"s}}).makerLetters);
}

TEST(Edid, HasNoSerialCodeThatNobodyFilledIn) {
    for (const std::string& code : {"\0\0\0\0"s, "\x01\x01\x01\x01"s, "\xFF\xFF\xFF\xFF"s}) {
        EXPECT_FALSE(edid({{12, code}}).serialCode);
    }
}

struct DateCase {
    std::string bytes;
    std::optional<unsigned> year, week, modelYear;
};

TEST(Edid, ReadsItsDate) {
    const DateCase kCases[] = {
        {"\x0C\x17"s, 2013, 12, {}}, {"\x36\x17"s, 2013, 54, {}},
        {"\x37\x17"s, 2013, {}, {}},  // there is no such week
        {"\x00\x17"s, 2013, {}, {}}, {"\xFF\x17"s, {}, {}, 2013},
    };
    for (const DateCase& row : kCases) {
        const Edid display = edid({{16, row.bytes}});
        EXPECT_EQ(row.year, display.manufactureYear);
        EXPECT_EQ(row.week, display.manufactureWeek);
        EXPECT_EQ(row.modelYear, display.modelYear);
    }
}

struct InputCase {
    std::string version;
    std::string byte;
    bool digital;
    std::string interface;
    std::optional<unsigned> bits;
};

TEST(Edid, ReadsItsInputByItsVersion) {
    const InputCase kCases[] = {
        {kVersion14, "\xA5"s, true, "DisplayPort", 8}, {kVersion14, "\xB2"s, true, "HDMI-a", 10},
        {kVersion14, "\x80"s, true, "", {}},           {kVersion14, "\xFF"s, true, "", {}},
        {kVersion13, "\xA5"s, true, "", {}},  // the same bits meant other things
        {kVersion14, "\x25"s, false, "", {}},
    };
    for (const InputCase& row : kCases) {
        const Edid display = edid({{18, row.version}, {20, row.byte}});
        EXPECT_EQ(row.digital, display.digital);
        EXPECT_EQ(row.interface, display.digitalInterface);
        EXPECT_EQ(row.bits, display.bitsPerColor);
    }
}

TEST(Edid, ReadsTheFirstTiming) {
    const Edid display = edid({{kFirstDescriptor, kFullHd}});
    ASSERT_TRUE(display.preferred);
    EXPECT_EQ(1920U, display.preferred->width);
    EXPECT_EQ(1080U, display.preferred->height);
    EXPECT_EQ(60000U, display.preferred->refreshMilliHertz);
    EXPECT_EQ(520U, display.widthMillimetres);
    EXPECT_EQ(290U, display.heightMillimetres);
}

TEST(Edid, CountsTheFieldsOfAnInterlacedTiming) {
    // 1920x1080 at 74.25 MHz, fields of 562.5 lines
    const Edid display = edid(
        {{kFirstDescriptor, "\x01\x1D\x80\x18\x71\x1C\x16\x20\x58\x2C\x25\x00\x08\x22\x21\x00\x00\x9E"s}});
    ASSERT_TRUE(display.preferred);
    EXPECT_EQ(1080U, display.preferred->height);
    EXPECT_EQ(60000U, display.preferred->refreshMilliHertz);
}

TEST(Edid, HasNoTimingInUnusedDescriptors) {
    EXPECT_FALSE(edid({{kFirstDescriptor, std::string(18, '\x01')}}).preferred);
    EXPECT_FALSE(edid({{kFirstDescriptor, edidTextDescriptor(0xFC, "Name")}}).preferred);
}

TEST(Edid, TakesItsSizeInCentimetresWithoutATiming) {
    const Edid display = edid({{21, "\x34\x1D"s}});
    EXPECT_EQ(520U, display.widthMillimetres);
    EXPECT_EQ(290U, display.heightMillimetres);
}

TEST(Edid, TakesAnAspectRatioForNoSize) {
    EXPECT_FALSE(edid({{21, "\x4F\x00"s}}).widthMillimetres);
}

TEST(Edid, ReadsItsTexts) {
    const Edid display = edid({{kFirstDescriptor, edidTextDescriptor(0xFE, "other")},
                               {kSecondDescriptor, edidTextDescriptor(0xFC, "DELL U2412M")},
                               {90, edidTextDescriptor(0xFF, "YMYH1234567L")}});
    EXPECT_EQ("DELL U2412M", display.model);
    EXPECT_EQ("YMYH1234567L", display.serialNumber);
}

TEST(Edid, JoinsANameOfTwoDescriptors) {
    const Edid display = edid({{kFirstDescriptor, edidTextDescriptor(0xFC, "Studioworks N")},
                               {kSecondDescriptor, edidTextDescriptor(0xFC, "2200P")}});
    EXPECT_EQ("Studioworks N 2200P", display.model);
}

TEST(Edid, TakesAnotherTextForTheModelWithoutAName) {
    EXPECT_EQ("LTN154U2-L05", edid({{90, edidTextDescriptor(0xFE, "LTN154U2-L05")}}).model);
}

TEST(Edid, DropsControlBytesInTexts) {
    EXPECT_EQ("AB", edid({{90, edidTextDescriptor(0xFC,
                                                  "A\x01"
                                                  "B\x1F")}})
                        .model);
}

struct RangeCase {
    std::string version;
    std::string descriptor;
    Edid::Range expected;
};

TEST(Edid, ReadsItsRateLimits) {
    const std::string head = "\0\0\0\xFD"s;
    const RangeCase kCases[] = {
        {kVersion13, head + "\x00\x32\x4B\x1E\x53\x0E\x00"s, {50, 75, 30, 83, 140000}},
        {kVersion14, head + "\x02\x32\x4B\x1E\x53\x0E\x00"s, {50, 330, 30, 83, 140000}},
        {kVersion14, head + "\x0F\x32\x4B\x1E\x53\x0E\x00"s, {305, 330, 285, 338, 140000}},
        {kVersion14, head + "\x01\x32\x4B\x1E\x53\x0E\x00"s, {50, 75, 30, 83, 140000}},  // reserved
        {kVersion13, head + "\x0F\x32\x4B\x1E\x53\x0E\x00"s, {50, 75, 30, 83, 140000}},
        {kVersion14, head + "\x00\x32\x4B\x1E\x53\x0E\x04\x11\x0C"s, {50, 75, 30, 83, 139250}},
        {kVersion14,
         head + "\x00\x32\x4B\x1E\x53\x01\x04\x11\xFC"s,
         {50, 75, 30, 83, 10000}},  // less than none
    };
    for (const RangeCase& row : kCases) {
        const Edid display = edid({{18, row.version}, {kSecondDescriptor, row.descriptor}});
        ASSERT_TRUE(display.range);
        EXPECT_EQ(row.expected.minVerticalHz, display.range->minVerticalHz);
        EXPECT_EQ(row.expected.maxVerticalHz, display.range->maxVerticalHz);
        EXPECT_EQ(row.expected.minHorizontalKHz, display.range->minHorizontalKHz);
        EXPECT_EQ(row.expected.maxHorizontalKHz, display.range->maxHorizontalKHz);
        EXPECT_EQ(row.expected.maxPixelClockKHz, display.range->maxPixelClockKHz);
    }
}

std::string extension(unsigned char tag, unsigned char timingsAt, const std::string& timing) {
    std::string block(128, '\0');
    block[0] = static_cast<char>(tag);
    block[1] = '\x03';
    block[2] = static_cast<char>(timingsAt);
    if (timingsAt + timing.size() <= block.size()) block.replace(timingsAt, timing.size(), timing);
    return block;
}

TEST(Edid, TakesATimingOfAnExtensionWhenTheBaseBlockHasNone) {
    const std::string base = edidBlock({{126, "\x01"s}});
    EXPECT_TRUE(parseEdid(base + extension(0x02, 4, kFullHd))->preferred);
    EXPECT_FALSE(parseEdid(base + extension(0x70, 4, kFullHd))->preferred);  // not a CTA-861 one
    EXPECT_FALSE(parseEdid(base + extension(0x02, 3, kFullHd))->preferred);
    EXPECT_FALSE(parseEdid(base + extension(0x02, 0xFF, kFullHd))->preferred);
    EXPECT_FALSE(parseEdid(edidBlock({}) + extension(0x02, 4, kFullHd))->preferred);  // tells of no extension
}

TEST(Edid, ReportsABadChecksum) {
    std::string block = edidBlock({{kFirstDescriptor, kFullHd}});
    EXPECT_TRUE(parseEdid(block)->checksumValid);
    block[20] = '\x01';
    EXPECT_FALSE(parseEdid(block)->checksumValid);
}

TEST(Edid, RefusesAnythingElse) {
    EXPECT_FALSE(parseEdid(""));
    EXPECT_FALSE(parseEdid(std::string(128, '\0')));
    EXPECT_FALSE(parseEdid(edidBlock({{0, "\xFF"s}})));
    const std::string block = edidBlock({});
    for (std::size_t size = 0; size < block.size(); ++size) EXPECT_FALSE(parseEdid(block.substr(0, size)));
}

TEST(Edid, ReadsNoExtensionBeyondItsEnd) {
    const std::string whole = edidBlock({{126, "\xFF"s}}) + extension(0x02, 0x6D, kFullHd);
    for (std::size_t size = 128; size < whole.size(); ++size) {
        EXPECT_FALSE(parseEdid(whole.substr(0, size))->preferred) << size;
    }
    EXPECT_TRUE(parseEdid(whole)->preferred);
}

}  // namespace
