#include "scanners/shared/bytes.h"

std::optional<std::uint64_t> Bytes::number(std::uint64_t offset, unsigned width) const {
    const std::optional<std::string_view> place = piece(offset, width);
    if (!place) return std::nullopt;
    std::uint64_t value = 0;
    for (unsigned i = 0; i < width; ++i) {
        const unsigned next = order_ == Order::Big ? i : width - 1 - i;
        value = value << 8U | static_cast<unsigned char>((*place)[next]);
    }
    return value;
}

std::optional<std::string_view> Bytes::piece(std::uint64_t offset, std::uint64_t length) const {
    if (offset > bytes_.size() || length > bytes_.size() - offset) return std::nullopt;
    return bytes_.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
}

std::optional<std::string_view> Bytes::text(std::uint64_t offset, std::size_t limit) const {
    if (offset > bytes_.size()) return std::nullopt;
    const std::string_view rest = bytes_.substr(static_cast<std::size_t>(offset), limit);
    const auto end = rest.find('\0');
    if (end == std::string_view::npos) return std::nullopt;
    return rest.substr(0, end);
}
