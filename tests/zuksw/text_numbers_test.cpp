#include "scanners/zuksw/index/text_numbers.h"

#include <gtest/gtest.h>

namespace zuksw {
namespace {

TEST(TextNumbers, CountsTextsInTheOrderInWhichTheyCome) {
    TextNumbers numbers;
    EXPECT_EQ(0U, numbers.add("b"));
    EXPECT_EQ(1U, numbers.add(""));
    EXPECT_EQ(0U, numbers.add("b"));
    EXPECT_EQ(2U, numbers.add("a"));
    EXPECT_EQ(3U, numbers.size());
}

TEST(TextNumbers, FindsOneOfVeryMany) {
    TextNumbers numbers;
    for (int i = 0; i < 10'000; ++i) numbers.add("text " + std::to_string(i));
    EXPECT_EQ(0U, numbers.find("text 0"));
    EXPECT_EQ(9'999U, numbers.find("text 9999"));
    EXPECT_EQ(std::nullopt, numbers.find("text 10000"));
}

TEST(TextNumbers, FindsNothingInNothing) {
    EXPECT_EQ(std::nullopt, TextNumbers().find(""));
}

}  // namespace
}  // namespace zuksw
