#include "scanners/zukhw/ids_file.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

const std::string kText =
    "# A list\n"
    "\n"
    "8086  Intel Corporation\n"
    "\t0d57  Bridge\n"
    "\t10d3  82574L  Gigabit\n"
    "# in the middle\n"
    "\t\t15d9 060a  X7SPA-H\n"
    "\t10d4  Other\n"
    "\t\t15d9 0001  Not of 10d3\n"
    "1af4  Red Hat, Inc.\r\n"
    "\t1000  Virtio network device\n"
    "AT 0100  Not a class\n"
    "C 03  Display controller\n"
    "\t00  VGA compatible controller\n"
    "\t\t01  8514 controller\n"
    "C 06  Bridge";

TEST(IdsFile, FindsNames) {
    const MemoryAccess file(kText);
    IdsFile list(file);
    EXPECT_EQ("Intel Corporation", list.name({"8086"}));
    EXPECT_EQ("Red Hat, Inc.", list.name({"1af4"}));
    EXPECT_EQ("82574L  Gigabit", list.name({"8086", "10d3"}));
    EXPECT_EQ("Display controller", list.name({"C 03"}));
    EXPECT_EQ("VGA compatible controller", list.name({"C 03", "00"}));
    EXPECT_EQ("Bridge", list.name({"C 06"}));
}

TEST(IdsFile, FindsSubsystemsOfTheirDeviceOnly) {
    const MemoryAccess file(kText);
    IdsFile list(file);
    EXPECT_EQ("X7SPA-H", list.name({"8086", "10d3", "15d9 060a"}));
    EXPECT_EQ("Not of 10d3", list.name({"8086", "10d4", "15d9 0001"}));
    EXPECT_EQ("", list.name({"8086", "10d3", "15d9 0001"}));
}

TEST(IdsFile, FindsNothingElse) {
    const MemoryAccess file(kText);
    IdsFile list(file);
    EXPECT_EQ("", list.name({"ffff"}));
    EXPECT_EQ("", list.name({"808"}));
    EXPECT_EQ("", list.name({""}));
    EXPECT_EQ("", list.name({"1af4", "10d3"}));
    EXPECT_EQ("", list.name({"ffff", "10d3", "15d9 060a"}));
}

std::string hex(unsigned number) {
    char text[5];
    std::snprintf(text, sizeof text, "%04x", number & 0xffffU);
    return text;
}

// Makers with even numbers, of which every hundredth has thousands of devices, one of them with hundreds of
// subsystems, then classes, then the rest; comments and empty lines between.
std::string longList() {
    std::string text = "#\n";
    for (unsigned maker = 0; maker < 0x1000; maker += 2) {
        text += hex(maker) + "  Maker " + hex(maker) + '\n';
        for (unsigned device = 0; device < (maker % 200 == 0 ? 3000 : 3); ++device)
            text += '\t' + hex(device) + "  Device of " + hex(maker) + '\n';
        for (unsigned subsystem = 0; subsystem < (maker % 200 == 0 ? 500 : 0); ++subsystem)
            text += "\t\t1af4 " + hex(subsystem) + "  Subsystem of " + hex(maker) + '\n';
        if (maker % 16 == 0) text += "# a comment\n\n\r\n";
    }
    for (unsigned number = 0; number < 20; ++number) {
        text += "C " + hex(number).substr(2) + "  Class " + hex(number) + '\n';
        text += "\t00  Kind of " + hex(number) + '\n';
    }
    for (unsigned terminal = 0; terminal < 1000; ++terminal) text += "AT " + hex(terminal) + "  Terminal\n";
    return text;
}

TEST(IdsFile, FindsEveryMakerOfALongList) {
    const std::string text = longList();
    const MemoryAccess file(text);
    IdsFile list(file);
    for (unsigned maker = 0; maker < 0x1000; maker += 2) {
        EXPECT_EQ("Maker " + hex(maker), list.name({hex(maker)}));
        EXPECT_EQ("Device of " + hex(maker), list.name({hex(maker), "0002"}));
    }
}

TEST(IdsFile, FindsEverySubsystemOfALongList) {
    const std::string text = longList();
    const MemoryAccess file(text);
    IdsFile list(file);
    for (unsigned subsystem = 0; subsystem < 500; ++subsystem)
        EXPECT_EQ("Subsystem of 0190", list.name({"0190", "0bb7", "1af4 " + hex(subsystem)}));
    EXPECT_EQ("", list.name({"0190", "0bb7", "1af4 01f4"}));
    EXPECT_EQ("", list.name({"0190", "0bb6", "1af4 0000"}));
}

TEST(IdsFile, FindsEveryClassOfALongList) {
    const std::string text = longList();
    const MemoryAccess file(text);
    IdsFile list(file);
    for (unsigned number = 0; number < 20; ++number) {
        EXPECT_EQ("Class " + hex(number), list.name({"C " + hex(number).substr(2)}));
        EXPECT_EQ("Kind of " + hex(number), list.name({"C " + hex(number).substr(2), "00"}));
    }
}

TEST(IdsFile, FindsNoMakerThatALongListLacks) {
    const std::string text = longList();
    const MemoryAccess file(text);
    IdsFile list(file);
    for (unsigned maker = 1; maker < 0x1010; maker += 2) EXPECT_EQ("", list.name({hex(maker)}));
}

// Counts how often it is read.
class CountedAccess final : public RandomAccess {
  public:
    explicit CountedAccess(std::string_view bytes) : access_(bytes) {}

    std::uint64_t size() const override { return access_.size(); }
    bool read(std::uint64_t offset, std::size_t length, std::string* piece) const override {
        ++reads;
        return access_.read(offset, length, piece);
    }

    mutable std::size_t reads = 0;

  private:
    MemoryAccess access_;
};

TEST(IdsFile, ReadsNothingForWhatItFoundBefore) {
    const CountedAccess file(kText);
    IdsFile list(file);
    const std::string name = list.name({"8086", "10d3"});
    const std::size_t reads = file.reads;
    EXPECT_EQ(name, list.name({"8086", "10d3"}));
    EXPECT_EQ(reads, file.reads);
}

TEST(IdsFile, ReadsALargePartInFewPieces) {
    const std::string text = "8086  Intel Corporation\n" + std::string(1000000, '\t') + "\n8087  Other\n";
    const CountedAccess file(text);
    EXPECT_EQ("Other", IdsFile(file).name({"8087"}));
    EXPECT_LT(file.reads, 100U);
}

TEST(IdsFile, FindsNumbersInUpperCase) {
    std::string text = longList();
    for (char& c : text) c = c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
    const MemoryAccess file(text);
    IdsFile list(file);
    EXPECT_EQ("MAkEr 0ABC", list.name({"0ABC"}));
}

// A file that somebody cuts short while it is read.
class CutFile final : public RandomAccess {
  public:
    CutFile(std::string_view text, int reads) : text_(text), reads_(reads) {}

    std::uint64_t size() const override { return text_.size(); }
    bool read(std::uint64_t offset, std::size_t length, std::string* piece) const override {
        piece->clear();
        return reads_-- > 0 && MemoryAccess(text_).read(offset, length, piece);
    }

  private:
    std::string_view text_;
    mutable int reads_;
};

TEST(IdsFile, BearsAFileThatIsCutWhileItIsRead) {
    const std::string text = longList();
    for (int reads = 0; reads < 60; ++reads) {
        const CutFile file(text, reads);
        const std::string name = IdsFile(file).name({"0190", "0bb7", "1af4 0123"});
        EXPECT_TRUE(name.empty() || name == "Subsystem of 0190") << reads << ": " << name;
    }
}

TEST(IdsFile, TakesNoFileThatIsTooLongForAList) {
    class : public RandomAccess {
        std::uint64_t size() const override { return std::uint64_t{1} << 40; }
        bool read(std::uint64_t, std::size_t, std::string*) const override {
            ADD_FAILURE() << "read";
            return false;
        }
    } file;
    EXPECT_EQ("", IdsFile(file).name({"8086"}));
}

TEST(IdsFile, BearsAFileThatBreaksOffAnywhere) {
    for (std::size_t size = 0; size <= kText.size(); ++size) {
        const MemoryAccess file(std::string_view(kText).substr(0, size));
        IdsFile list(file);
        EXPECT_LE(list.name({"8086", "10d3"}).size(), 15U);
    }
}

}  // namespace
