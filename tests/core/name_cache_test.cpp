#include "platform/name_cache.h"

#include <gtest/gtest.h>

#include <string>

namespace {
class NameCacheTest : public testing::Test {
  protected:
    Arena arena_;
    WideText text_{arena_};
    NameCache names_{arena_, text_};
};

TEST_F(NameCacheTest, SharesEqualNames) {
    const std::string again = "Name";
    EXPECT_EQ(names_.widen("Name"), names_.widen(again.c_str()));
}

TEST_F(NameCacheTest, TellsNamesApart) {
    EXPECT_STREQ(L"Name", names_.widen("Name"));
    EXPECT_STREQ(L"Names", names_.widen("Names"));
    EXPECT_STREQ(L"Nam\u00E9", names_.widen("Nam\xC3\xA9"));
}

TEST_F(NameCacheTest, WidensMoreNamesThanItRemembers) {
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 20000; ++i) {
            const std::string name = "name" + std::to_string(i);
            ASSERT_EQ(std::wstring(name.begin(), name.end()), names_.widen(name.c_str()));
        }
    }
}
}  // namespace
