#include "scanners/zukhw/natural_sort.h"

#include <gtest/gtest.h>

namespace {

TEST(NaturalSort, CountsRunsOfDigitsAsNumbers) {
    std::vector<std::string> names = {"sda10", "sdb", "sda2", "sda", "nvme0n1p1", "nvme0n1"};
    naturalSort(&names);
    EXPECT_EQ((std::vector<std::string>{"nvme0n1", "nvme0n1p1", "sda", "sda2", "sda10", "sdb"}), names);
}

TEST(NaturalSort, HandlesNumbersOfAnyLength) {
    EXPECT_TRUE(naturalLess("a99999999999999999999998", "a99999999999999999999999"));
    EXPECT_TRUE(naturalLess("a9", "a00000000000000000000010"));
}

TEST(NaturalSort, OrdersEqualNumbersByTheirBytes) {
    EXPECT_TRUE(naturalLess("a01", "a1"));
    EXPECT_FALSE(naturalLess("a1", "a01"));
    EXPECT_FALSE(naturalLess("a1", "a1"));
}

}  // namespace
