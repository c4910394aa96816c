#pragma once

#include <string>
#include <vector>

#include "tests/zuksw/rpm_builder.h"

// Puts together a Packages.db, as rpm keeps its packages on some distributions.

constexpr std::size_t kNdbPage = 4096;

inline std::string ndbSlot(std::uint64_t package, std::uint64_t block, std::uint64_t blocks) {
    return "Slot" + littleEndian(package, 4) + littleEndian(block, 4) + littleEndian(blocks, 4);
}

inline std::string ndbBlob(std::uint64_t package, const std::string& blob) {
    std::string bytes =
        "BlbS" + littleEndian(package, 4) + littleEndian(1, 4) + littleEndian(blob.size(), 4) + blob;
    bytes.resize((bytes.size() + 12 + 15) / 16 * 16 - 12, '\0');
    return bytes + littleEndian(0, 4) + littleEndian(blob.size(), 4) + "BlbE";
}

// One page of slots, then the blobs.
inline std::string ndbDatabase(const std::vector<std::string>& blobs) {
    std::string head = "RpmP" + littleEndian(0, 4) + littleEndian(1, 4) + littleEndian(1, 4) +
                       littleEndian(blobs.size() + 1, 4) + std::string(12, '\0');
    std::string body;
    for (std::size_t i = 0; i < blobs.size(); ++i) {
        const std::string blob = ndbBlob(i + 1, blobs[i]);
        head += ndbSlot(i + 1, (kNdbPage + body.size()) / 16, blob.size() / 16);
        body += blob;
    }
    while (head.size() < kNdbPage) head += ndbSlot(0, 0, 0);
    return head + body;
}
