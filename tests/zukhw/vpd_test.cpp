#include "scanners/zukhw/vpd.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

std::string page(unsigned number, const std::string& body) {
    return std::string{0, static_cast<char>(number), static_cast<char>(body.size() >> 8),
                       static_cast<char>(body.size() & 0xFFU)} +
           body;
}

std::string designator(unsigned type, unsigned association, const std::string& bytes) {
    return std::string{1, static_cast<char>(association << 4 | type), 0, static_cast<char>(bytes.size())} +
           bytes;
}

TEST(Vpd, SerialIsAsLongAsThePageSaysAndIs) {
    EXPECT_EQ("ABC ", vpdSerial(page(0x80, "ABC ") + "rest"));
    EXPECT_EQ("AB", vpdSerial("\x00\x80\xFF\xFF"s + "AB"));  // the page ends before its length
    EXPECT_EQ("", vpdSerial(page(0x83, "ABC")));
    EXPECT_EQ("", vpdSerial("\x00\x80\x00"s));
}

TEST(Vpd, NamePrefersNaaOverEui) {
    const std::string eui = designator(2, 0, "\x00\x25\x38\x5b\x71\x00\x12\x34"s);
    const std::string naa = designator(3, 0, "\x50\x00\xc5\x00\xa1\xb2\xc3\xd4"s);
    EXPECT_EQ("naa.5000c500a1b2c3d4", vpdName(page(0x83, eui + naa)));
    EXPECT_EQ("eui.0025385b71001234", vpdName(page(0x83, eui)));
}

TEST(Vpd, NameIsNotThatOfAPort) {
    EXPECT_EQ("", vpdName(page(0x83, designator(3, 1, "\x50\x00"s))));
}

TEST(Vpd, NameStopsAtACutDesignator) {
    EXPECT_EQ("", vpdName(page(0x83, "\x01\x03\x00\x08\x50\x00"s)));
    EXPECT_EQ("", vpdName(page(0x83, "\x01\x03"s)));
    EXPECT_EQ("", vpdName(page(0x83, designator(3, 0, ""))));
}

// IDENTIFY DEVICE with texts as they stand there: characters swapped in pairs.
std::string ataPage(const std::string& swappedSerial, std::uint16_t word76, std::uint16_t word217) {
    std::string identify(512, '\0');
    identify.replace(20, swappedSerial.size(), swappedSerial);
    identify.replace(46, 8, "F1.2RV  ");
    const auto setWord = [&](std::size_t word, std::uint16_t value) {
        identify[word * 2] = static_cast<char>(value & 0xFFU);
        identify[word * 2 + 1] = static_cast<char>(value >> 8);
    };
    setWord(76, word76);
    setWord(217, word217);
    return page(0x89, std::string(56, '\0') + identify);
}

TEST(Vpd, AtaTextsAreSwappedBack) {
    const auto identity = vpdAtaIdentity(ataPage("ESIRLA", 0x850E, 7200));
    ASSERT_TRUE(identity.has_value());
    EXPECT_EQ("SERIAL", identity->serial.substr(0, 6));
    EXPECT_EQ("1F2.VR  ", identity->revision);
    EXPECT_EQ(7200, identity->rotation);
    EXPECT_TRUE(identity->serialAta);
}

TEST(Vpd, AtaWithoutSerialSpeedsIsParallel) {
    EXPECT_FALSE(vpdAtaIdentity(ataPage("", 0, 0))->serialAta);
    EXPECT_FALSE(vpdAtaIdentity(ataPage("", 0xFFFF, 0))->serialAta);
}

TEST(Vpd, AtaPageHasToBeWhole) {
    EXPECT_FALSE(vpdAtaIdentity(ataPage("", 0, 0).substr(0, 571)).has_value());
    EXPECT_FALSE(vpdAtaIdentity("").has_value());
}

struct RotationCase {
    std::string page;
    std::optional<unsigned> rpm;
};

TEST(Vpd, RotationHasCodesThatAreNoSpeeds) {
    const RotationCase cases[] = {
        {page(0xB1, "\x1C\x20"s), 7200}, {page(0xB1, "\x00\x01"s), {}}, {page(0xB1, "\x00\x00"s), {}},
        {page(0xB1, "\x04\x00"s), {}},   {page(0xB1, "\xFF\xFF"s), {}}, {page(0xB1, "\x1C"s), {}},
    };
    for (const RotationCase& c : cases) EXPECT_EQ(c.rpm, rotationRpm(vpdRotation(c.page)));
}

}  // namespace
