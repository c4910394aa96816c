#include "platform/arena.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {
constexpr std::size_t kHugePage = std::size_t{2} << 20;

std::size_t roundUp(std::size_t bytes, std::size_t unit) {
    return (bytes + unit - 1) / unit * unit;
}

Arena::Block allocateSmall(std::size_t bytes) {
    Arena::Block block(std::malloc(bytes));
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

// Whole huge pages, where the system has them, and all touched at once: a large tree would otherwise spend
// a good part of its time in page faults. Both are wishes; a system that cannot do it serves page by page.
// The memory goes back to the system with the tree, whatever else the heap holds by then.
Arena::Block allocateLarge(std::size_t bytes) {
    // mmap aligns to small pages only: ask for more and give back what is too much at both ends.
    const std::size_t span = bytes + kHugePage;
    void* mapping = mmap(nullptr, span, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) throw std::bad_alloc();
    auto* begin = static_cast<char*>(mapping);
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::size_t before = roundUp(address, kHugePage) - address;
    char* block = begin + before;
    if (before > 0) munmap(begin, before);
    if (before < kHugePage) munmap(block + bytes, kHugePage - before);
    madvise(block, bytes, MADV_HUGEPAGE);
    madvise(block, bytes, MADV_POPULATE_WRITE);
    return {block, Arena::Release{bytes}};
}
}  // namespace

void Arena::Release::operator()(void* block) const {
    if (mapped > 0) {
        munmap(block, mapped);
    } else {
        std::free(block);
    }
}

void Arena::startBlock(std::size_t bytes) {
    const std::size_t least = std::max(bytes, nextSize_);
    const bool isLarge = least >= kHugePage;
    const std::size_t size = roundUp(least, isLarge ? kHugePage : kAlignment);
    Block block = isLarge ? allocateLarge(size) : allocateSmall(size);
    auto* begin = static_cast<char*>(block.get());
    adopt(std::move(block));
    free_ = begin;
    end_ = begin + size;
    nextSize_ = std::min(nextSize_ * 2, kHugePage);  // small files take little, large ones few blocks
}

void* Arena::allocateSlowly(std::size_t bytes) {
    startBlock(bytes);
    return std::exchange(free_, free_ + bytes);
}
