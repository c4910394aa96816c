#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

// Memory for things that live and die together: nothing is given back singly, and the destructors of what
// is made here are not run. Failed allocations throw std::bad_alloc.
class Arena {
  public:
    struct Release {
        std::size_t mapped = 0;  // the size of a block of mmap's; 0 for one of malloc's
        void operator()(void* block) const;
    };
    using Block = std::unique_ptr<void, Release>;

    static constexpr std::size_t kAlignment = alignof(void*);

    template <class T, class... Arguments>
    T* make(Arguments&&... arguments) {
        static_assert(alignof(T) <= kAlignment);
        return new (allocate(sizeof(T))) T(std::forward<Arguments>(arguments)...);
    }
    void* allocate(std::size_t bytes) {
        const std::size_t rounded = (bytes + kAlignment - 1) / kAlignment * kAlignment;
        if (rounded > room()) return allocateSlowly(rounded);
        return std::exchange(free_, free_ + rounded);
    }

    // The unused bytes at the free end: the next allocation begins there. They may be written before the
    // allocation that claims them.
    char* freeEnd() const { return free_; }
    std::size_t room() const { return static_cast<std::size_t>(end_ - free_); }
    // Moves the free end to a new block with room for `bytes` or more.
    void startBlock(std::size_t bytes);
    // Takes over a block.
    void adopt(Block block) { blocks_.push_back(std::move(block)); }

  private:
    void* allocateSlowly(std::size_t bytes);

    std::vector<Block> blocks_;
    char* free_ = nullptr;  // always aligned
    char* end_ = nullptr;
    std::size_t nextSize_ = std::size_t{4} << 10;
};
