#include "platform/arena.h"

#include <algorithm>

namespace {
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;
}

void Arena::startBlock(std::size_t bytes) {
    const std::size_t size = std::max((bytes + kAlignment - 1) / kAlignment * kAlignment, nextSize_);
    Block block(std::malloc(size));
    if (block == nullptr) throw std::bad_alloc();
    auto* begin = static_cast<char*>(block.get());
    adopt(std::move(block));
    free_ = begin;
    end_ = begin + size;
    nextSize_ = std::min(nextSize_ * 2, kLargestBlock);  // small files take little, large ones few blocks
}

void* Arena::allocateSlowly(std::size_t bytes) {
    startBlock(bytes);
    return std::exchange(free_, free_ + bytes);
}
