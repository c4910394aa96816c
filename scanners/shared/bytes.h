#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// Reads numbers and pieces from a block of bytes that nobody vouches for: what does not lie wholly inside
// gives no value. Points into the block.
class Bytes {
  public:
    enum class Order { Little, Big };

    Bytes(std::string_view bytes, Order order) : bytes_(bytes), order_(order) {}

    std::string_view all() const { return bytes_; }
    std::size_t size() const { return bytes_.size(); }
    Order order() const { return order_; }

    // The unsigned number of `width` bytes (1 to 8) at `offset`.
    std::optional<std::uint64_t> number(std::uint64_t offset, unsigned width) const;

    // The same; 0 when it lies outside. For numbers whose whole record is known to lie inside.
    std::uint64_t numberOr0(std::uint64_t offset, unsigned width) const {
        return number(offset, width).value_or(0);
    }

    std::optional<std::string_view> piece(std::uint64_t offset, std::uint64_t length) const;

    // The text at `offset` up to a NUL, without it; no value when there is none within `limit` bytes.
    std::optional<std::string_view> text(std::uint64_t offset, std::size_t limit) const;

  private:
    std::string_view bytes_;
    Order order_;
};
