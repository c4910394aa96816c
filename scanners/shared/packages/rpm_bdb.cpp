#include <cstdint>
#include <optional>
#include <vector>

#include "scanners/shared/bytes.h"
#include "scanners/shared/packages/rpm_blobs.h"

// A hash table in pages of equal size. Each header is the value of a pair, in the page itself or, as nearly
// all are too long for that, in a chain of overflow pages. We need no key, so we walk the pages in order.
namespace {

constexpr std::uint64_t kHashMagic = 0x061561;
constexpr std::uint64_t kHashMetaType = 8;
constexpr std::uint64_t kHashTypes[] = {2, 13};  // unsorted and sorted
constexpr std::uint64_t kOverflowType = 7;
constexpr char kInPage = 1;
constexpr char kOffPage = 3;
constexpr std::size_t kMetaSize = 72;
constexpr std::size_t kPageHeader = 26;
constexpr std::uint64_t kMaxBlob = 64U << 20U;

class Database {
  public:
    Database(const RandomAccess& file, const TakeBlob& take) : file_(file), take_(take) {}

    std::string read() {
        std::string problem = readMeta();
        if (!problem.empty()) return problem;
        std::string page;
        for (std::uint64_t number = 1; number < pages_; ++number) {
            if (!file_.read(number * pageSize_, pageSize_, &page)) return "a page cannot be read";
            readHashPage(Bytes(page, order_));
        }
        return damaged_ ? "a package is damaged" : "";
    }

  private:
    std::string readMeta() {
        std::string bytes;
        if (!file_.read(0, kMetaSize, &bytes)) return "the database is shorter than its header";
        // Written in the byte order of the machine that made it.
        if (Bytes(bytes, order_).numberOr0(12, 4) != kHashMagic) order_ = Bytes::Order::Big;
        const Bytes meta(bytes, order_);
        const bool hash = meta.numberOr0(12, 4) == kHashMagic && meta.numberOr0(25, 1) == kHashMetaType;
        if (!hash) return "the file does not begin as such a database does";
        if (meta.numberOr0(24, 1) != 0) return "the database is encrypted";
        pageSize_ = static_cast<std::size_t>(meta.numberOr0(20, 4));
        const bool powerOfTwo = (pageSize_ & (pageSize_ - 1)) == 0;
        if (pageSize_ < 512 || pageSize_ > 65536 || !powerOfTwo) return "the size of its pages is impossible";
        pages_ = file_.size() / pageSize_;
        visited_.resize(static_cast<std::size_t>(pages_));
        return "";
    }

    // Keys and values take turns in the table of offsets; items grow from the page's end towards it.
    void readHashPage(const Bytes& page) {
        const std::uint64_t type = page.numberOr0(25, 1);
        if (type != kHashTypes[0] && type != kHashTypes[1]) return;
        const std::uint64_t entries = page.numberOr0(20, 2);
        for (std::uint64_t i = 1; i < entries; i += 2) {
            const std::uint64_t begin = page.numberOr0(kPageHeader + i * 2, 2);
            const std::uint64_t end = page.numberOr0(kPageHeader + (i - 1) * 2, 2);
            const auto item = begin < end ? page.piece(begin, end - begin) : std::nullopt;
            if (!item) {
                damaged_ = true;
                return;
            }
            readItem(Bytes(*item, order_));
        }
    }

    void readItem(const Bytes& item) {
        const char type = item.all().front();
        if (type == kInPage) return take(item.all().substr(1));
        if (type != kOffPage) return;
        const std::uint64_t first = item.numberOr0(4, 4);
        const std::uint64_t length = item.numberOr0(8, 4);
        const std::optional<std::string> blob = readChain(first, length);
        if (!blob) damaged_ = true;
        if (blob) take(*blob);
    }

    // The entry that counts the packages is a number, too short for a header.
    void take(std::string_view blob) const {
        if (blob.size() > 8) take_(blob);
    }

    // Each page belongs to one chain, so chains together are no longer than the file.
    std::optional<std::string> readChain(std::uint64_t number, std::uint64_t length) {
        std::string blob;
        std::string bytes;
        if (length > kMaxBlob) return std::nullopt;
        while (blob.size() < length) {
            if (number == 0 || number >= pages_ || visited_[number]) return std::nullopt;
            visited_[number] = true;
            if (!file_.read(number * pageSize_, pageSize_, &bytes)) return std::nullopt;
            const Bytes page(bytes, order_);
            const auto data = page.piece(kPageHeader, page.numberOr0(22, 2));
            if (page.numberOr0(25, 1) != kOverflowType || !data || data->empty()) return std::nullopt;
            blob.append(*data);
            number = page.numberOr0(16, 4);
        }
        if (blob.size() != length) return std::nullopt;
        return blob;
    }

    const RandomAccess& file_;
    const TakeBlob& take_;
    Bytes::Order order_ = Bytes::Order::Little;
    std::size_t pageSize_ = 0;
    std::uint64_t pages_ = 0;
    std::vector<bool> visited_;
    bool damaged_ = false;
};

}  // namespace

std::string readRpmBdb(const RandomAccess& file, const TakeBlob& take) {
    return Database(file, take).read();
}
