#pragma once

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <thread>
#include <vector>

namespace zuksw {

/** How many threads to use where `wanted` are asked for; 0: as many as there are cores, up to 4. */
inline unsigned threadsFor(std::uint64_t wanted) {
    if (wanted != 0) return static_cast<unsigned>(wanted);
    return std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
}

/** Runs `work` on `count` threads, the calling one among them, or on fewer when the system has no more to
 *  give. Returns when all of them are done. */
template <typename Work>
void runOnThreads(unsigned count, const Work& work) {
    std::vector<std::thread> others;
    try {
        while (others.size() + 1 < count) others.emplace_back(work);
    } catch (const std::system_error&) {  // slower, but no other result
    }
    work();
    for (std::thread& other : others) other.join();
}

}  // namespace zuksw
