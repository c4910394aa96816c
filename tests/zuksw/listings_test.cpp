#include "scanners/zuksw/walk/listings.h"

#include <dirent.h>

#include "tests/zuksw/scan_fixture.h"

namespace {

using zuksw::Listings;

TEST(ListingsTest, KeepsWhatADirectoryHolds) {
    Listings listings;
    EXPECT_EQ(nullptr, listings.find("/a"));
    listings.keep("/a", {{"f", DT_REG}});
    ASSERT_NE(nullptr, listings.find("/a"));
    EXPECT_EQ("f", listings.find("/a")->front().name);
}

TEST(ListingsTest, KeepsNotMoreThanItMay) {
    Listings listings;
    listings.keep("/first", Listings::Listing(Listings::kLongest));
    const auto held = listings.find("/first");  // whoever reads it goes on doing so
    for (int i = 0; i < 100; ++i) listings.keep("/" + std::to_string(i), Listings::Listing(1000));
    EXPECT_EQ(nullptr, listings.find("/first"));
    EXPECT_EQ(Listings::kLongest, held->size());
}

class ListedDirectories : public ScanTest {};

TEST_F(ListedDirectories, AnswerEveryGlobTheSame) {
    file("/d/a1");
    file("/d/b1/x");
    link("a1", "/d/l1");
    const std::string twice = "<File path=\"/d/a*\" as=\"f\"/>";
    EXPECT_EQ("yes", truth(twice + "<File path=\"/d/a?\"/><File path=\"/d/b*/x\"/>"));
    EXPECT_EQ("yes", truth(twice + "<File path=\"/d/l*\" type=\"symlink\"/>"));
    EXPECT_EQ("no", truth(twice + "<File path=\"/d/l*\"/>"));
    EXPECT_EQ("yes", truth(twice + "<File path=\"/d/b*\" type=\"directory\"/>"));
}

}  // namespace
