#include <gtest/gtest.h>

#include "scanners/shared/packages/rpm_blobs.h"
#include "tests/zuksw/rpm_ndb_builder.h"
#include "tests/zuksw/rpm_reading.h"

namespace {

RpmReading read(const std::string& file) {
    return readBlobs(readRpmNdb, MemoryAccess(file));
}

TEST(RpmNdb, EveryBlob) {
    const std::vector<std::string> blobs = {"first", std::string(5000, 'x'), ""};
    const RpmReading reading = read(ndbDatabase(blobs));
    EXPECT_EQ(reading.blobs, blobs);
    EXPECT_EQ(reading.problem, "");
}

TEST(RpmNdb, ADatabaseWithoutPackages) {
    const RpmReading reading = read(ndbDatabase({}));
    EXPECT_TRUE(reading.blobs.empty());
    EXPECT_EQ(reading.problem, "");
}

struct DamagedCase {
    std::string_view what;
    std::size_t place;
    std::string bytes;
    std::size_t blobs;  // those that can be read all the same
};

TEST(RpmNdb, DamageIsTold) {
    const std::string whole = ndbDatabase({"first", "second"});
    const DamagedCase cases[] = {
        {"another mark", 0, "X", 0},
        {"another version", 4, "\1", 0},
        {"more pages of slots than the file has", 12, "\xFF\xFF\xFF\xFF", 0},
        {"a slot without its mark", 32, "X", 0},
        {"a blob beyond the end", 40, "\xFF\xFF\xFF\xFF", 1},
        {"a blob of another package", 36, "\7", 1},
        {"a blob without its mark", kNdbPage, "X", 1},
        {"a blob longer than its blocks", kNdbPage + 12, "\xFF", 1},
        {"a blob longer than all limits", kNdbPage + 12, "\xFF\xFF\xFF\xFF", 1},
    };
    for (const DamagedCase& c : cases) {
        std::string file = whole;
        file.replace(c.place, c.bytes.size(), c.bytes);
        const RpmReading reading = read(file);
        EXPECT_NE(reading.problem, "") << c.what;
        EXPECT_EQ(reading.blobs.size(), c.blobs) << c.what;
    }
}

TEST(RpmNdb, AnEmptyFileIsDamaged) {
    EXPECT_NE(read("").problem, "");
}

// Many slots that lead to one long blob would make the reader work without end.
TEST(RpmNdb, BlobsTogetherAreNoLongerThanTheFile) {
    std::string file = ndbDatabase({std::string(10000, 'x')});
    for (std::size_t place = 48; place < kNdbPage; place += 16) file.replace(place, 16, file.substr(32, 16));
    EXPECT_EQ(read(file).blobs.size(), 1U);
    EXPECT_NE(read(file).problem, "");
}

}  // namespace
