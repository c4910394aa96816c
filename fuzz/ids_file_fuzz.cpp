// Any file is searched as a list of device names without harm, and what is found stands in it.
#include "scanners/zukhw/ids_file.h"

#include <cstdint>
#include <cstdlib>

namespace {

void search(std::string_view text) {
    const MemoryAccess file(text);
    IdsFile list(file);
    const auto check = [&](std::initializer_list<std::string_view> keys) {
        if (text.find(list.name(keys)) == std::string_view::npos) std::abort();
    };
    check({"1af4"});
    check({"8086", "1237"});
    check({"8086", "1237", "1af4 1100"});
    check({"C 03", "00"});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    search(text);
    // Only a long list is halved.
    std::string longText;
    for (int i = 0; i < 20; ++i) longText.append(text).append("\n").append(2000, '#').append("\n");
    search(longText);
    return 0;
}
