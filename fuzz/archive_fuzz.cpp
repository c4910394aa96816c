// Members of any archive are read within the limits.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zuksw/formats/archive.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zuksw::ArchiveLimits limits;
    limits.maxMembers = 100;
    limits.maxMemberSize = 65536;
    limits.maxTotal = std::uint64_t{1} << 20U;
    std::uint64_t members = 0;
    const auto take = [&](const zuksw::ArchiveMember& member) {
        if (++members > limits.maxMembers || member.content.size() > limits.maxMemberSize) std::abort();
        if (member.state != zuksw::ArchiveState::kOk && !member.content.empty()) std::abort();
    };
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    // Every second one is passed over, so that both ways are walked.
    bool wanted = false;
    zuksw::readArchive(
        bytes, limits, [&](std::string_view) { return wanted = !wanted; }, take, [] { return true; });
    return 0;
}
