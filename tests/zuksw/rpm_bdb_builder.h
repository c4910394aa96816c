#pragma once

#include "tests/zuksw/rpm_builder.h"

// Puts together the pages of a Berkeley DB hash, as older rpm keeps its packages.

constexpr std::size_t kBdbPage = 512;

inline std::string bdbPadded(std::string page) {
    page.resize(kBdbPage, '\0');
    return page;
}

inline std::string bdbMeta() {
    std::string bytes =
        std::string(12, '\0') + littleEndian(0x061561, 4) + littleEndian(9, 4) + littleEndian(kBdbPage, 4);
    bytes += std::string(1, '\0') + '\x08';
    return bdbPadded(bytes);
}

inline std::string bdbPageHead(std::uint64_t next, std::uint64_t entries, std::uint64_t offset, char type) {
    return std::string(16, '\0') + littleEndian(next, 4) + littleEndian(entries, 2) +
           littleEndian(offset, 2) + '\0' + type;
}

// A page with one pair: a key of four bytes and `item`.
inline std::string bdbHashPage(const std::string& item) {
    const std::size_t key = kBdbPage - 5;
    const std::size_t value = key - item.size();
    std::string page = bdbPageHead(0, 2, value, '\x0D') + littleEndian(key, 2) + littleEndian(value, 2);
    page.resize(value, '\0');
    return page + item + '\1' + "key1";
}

inline std::string bdbOffPage(std::uint64_t first, std::uint64_t length) {
    return std::string("\3\0\0\0", 4) + littleEndian(first, 4) + littleEndian(length, 4);
}

inline std::string bdbOverflow(std::uint64_t next, const std::string& data) {
    return bdbPadded(bdbPageHead(next, 1, data.size(), '\7') + data);
}
