#include "platform/arena.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>

namespace {
TEST(Arena, AlignsEveryAllocation) {
    Arena arena;
    for (std::size_t size = 1; size < 200; ++size) {
        EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(arena.allocate(size)) % Arena::kAlignment) << size;
    }
}

TEST(Arena, KeepsAllocationsApart) {
    Arena arena;
    std::minstd_rand random;
    std::vector<std::pair<unsigned char*, std::size_t>> allocations;
    for (int i = 0; i < 3000; ++i) {
        const std::size_t size = 1 + random() % 5000;
        auto* bytes = static_cast<unsigned char*>(arena.allocate(size));
        std::memset(bytes, i % 251, size);
        allocations.emplace_back(bytes, size);
    }
    for (std::size_t i = 0; i < allocations.size(); ++i) {
        const auto [bytes, size] = allocations[i];
        EXPECT_TRUE(std::all_of(bytes, bytes + size, [&](unsigned char b) { return b == i % 251; })) << i;
    }
}

TEST(Arena, GivesBlocksLargerThanItsOwn) {
    Arena arena;
    constexpr std::size_t kSize = 5 << 20;
    std::memset(arena.allocate(kSize), 1, kSize);
    EXPECT_NE(nullptr, arena.allocate(8));
}

TEST(Arena, MakesObjects) {
    Arena arena;
    EXPECT_EQ(7, *arena.make<int>(7));
}
}  // namespace
