#include "scanners/zukhw/paged_file.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kMaxPages = 256;
constexpr std::uint64_t kMaxOffset = std::uint64_t{1} << 40;

}  // namespace

// Shorter than a page at the end of the file, empty beyond it. Valid until the next call.
const std::string& PagedFile::page(std::uint64_t number) {
    const auto known = pages_.find(number);
    if (known != pages_.end()) return known->second;
    if (pages_.size() == kMaxPages) pages_.clear();
    std::string bytes(kPage, '\0');
    ssize_t count = 0;
    do {
        count = ::pread(fd_.get(), bytes.data(), bytes.size(), static_cast<off_t>(number * kPage));
    } while (count < 0 && errno == EINTR);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return pages_.emplace(number, std::move(bytes)).first->second;
}

bool PagedFile::read(std::uint64_t offset, void* to, std::size_t size) {
    if (offset > kMaxOffset) return false;
    char* out = static_cast<char*>(to);
    while (size > 0) {
        const std::string& bytes = page(offset / kPage);
        const std::size_t within = offset % kPage;
        if (within >= bytes.size()) return false;
        const std::size_t count = std::min(size, bytes.size() - within);
        std::copy_n(bytes.data() + within, count, out);
        out += count;
        offset += count;
        size -= count;
    }
    return true;
}

std::string PagedFile::text(std::uint64_t offset, std::size_t limit) {
    std::string text;
    while (offset <= kMaxOffset && text.size() < limit) {
        const std::string& bytes = page(offset / kPage);
        const std::size_t within = offset % kPage;
        if (within >= bytes.size()) break;
        const std::size_t end = std::min(bytes.find('\0', within), bytes.size());
        text.append(bytes, within, end - within);
        if (end < bytes.size()) return text.size() < limit ? text : "";
        offset += end - within;
    }
    return "";
}
