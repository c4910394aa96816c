// What a print server answers is read without harm whatever its bytes, and no queue lacks its name.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/ipp.h"
#include "scanners/zukhw/local_http.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view answer(reinterpret_cast<const char*>(data), size);
    const auto body = bodyOfHttpAnswer(answer);
    if (body && body->size() > size) std::abort();
    for (const PrintQueue& queue : parseIppQueues(body ? std::string_view(*body) : answer)) {
        if (queue.name.empty()) std::abort();
    }
    return 0;
}
