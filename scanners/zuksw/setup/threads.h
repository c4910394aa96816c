#pragma once

#include <system_error>
#include <thread>
#include <vector>

namespace zuksw {

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
