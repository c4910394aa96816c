#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Puts together what rpm keeps: headers, and databases that hold them.

inline std::string bigEndian32(std::uint64_t value) {
    std::string bytes;
    for (unsigned shift = 32; shift > 0; shift -= 8) bytes += static_cast<char>(value >> (shift - 8) & 0xFFU);
    return bytes;
}

inline std::string littleEndian(std::uint64_t value, unsigned width) {
    std::string bytes;
    for (unsigned i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFFU);
    return bytes;
}

class RpmHeaderBuilder {
  public:
    RpmHeaderBuilder& text(std::uint32_t tag, std::string_view value, std::uint32_t type = 6) {
        return texts(tag, {value}, type);
    }
    RpmHeaderBuilder& texts(std::uint32_t tag, const std::vector<std::string_view>& values,
                            std::uint32_t type = 8) {
        entry(tag, type, values.size());
        for (const std::string_view value : values) data_.append(value).append(1, '\0');
        return *this;
    }
    RpmHeaderBuilder& numbers(std::uint32_t tag, const std::vector<std::uint32_t>& values) {
        data_.resize((data_.size() + 3) / 4 * 4, '\0');
        entry(tag, 4, values.size());
        for (const std::uint32_t value : values) data_ += bigEndian32(value);
        return *this;
    }
    RpmHeaderBuilder& number64(std::uint32_t tag, std::uint64_t value) {
        entry(tag, 5, 1);
        data_ += bigEndian32(value >> 32U) + bigEndian32(value);
        return *this;
    }
    std::string build() const {
        return bigEndian32(index_.size() / 16) + bigEndian32(data_.size()) + index_ + data_;
    }

    // A package with nothing but what it must have.
    static std::string simple(std::string_view name) {
        return RpmHeaderBuilder().text(1000, name).text(1001, "1.0").text(1002, "2").build();
    }

  private:
    void entry(std::uint32_t tag, std::uint32_t type, std::size_t count) {
        index_ += bigEndian32(tag) + bigEndian32(type) + bigEndian32(data_.size()) + bigEndian32(count);
    }

    std::string index_;
    std::string data_;
};
