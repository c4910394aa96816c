#include <cstdint>

#include "scanners/shared/bytes.h"
#include "scanners/shared/packages/rpm_blobs.h"

// Pages of slots at the beginning tell where in the file the blobs are; everything is counted in blocks of 16
// bytes, little-endian.
namespace {

constexpr std::uint64_t kDatabaseMagic = 0x506d7052;  // "RpmP"
constexpr std::uint64_t kSlotMagic = 0x746f6c53;      // "Slot"
constexpr std::uint64_t kBlobMagic = 0x53626c42;      // "BlbS"
constexpr std::uint64_t kPageSize = 4096;
constexpr std::uint64_t kBlockSize = 16;
constexpr std::size_t kHeaderSize = 32;
constexpr std::uint64_t kSlotSize = 16;
constexpr std::uint64_t kBlobHeadSize = 16;
constexpr std::uint64_t kMaxBlob = 64U << 20U;

// The blob of one slot; false when it is not what the slot says, or when what all blobs together claim to
// hold is more than the file.
bool readBlob(const RandomAccess& file, const Bytes& slot, std::uint64_t* bytesLeft, std::string* blob) {
    const std::uint64_t offset = slot.numberOr0(8, 4) * kBlockSize;
    const std::uint64_t room = slot.numberOr0(12, 4) * kBlockSize;
    if (!file.read(offset, kBlobHeadSize, blob)) return false;
    const Bytes head(*blob, Bytes::Order::Little);
    const std::uint64_t length = head.numberOr0(12, 4);
    if (head.numberOr0(0, 4) != kBlobMagic || head.numberOr0(4, 4) != slot.numberOr0(4, 4)) return false;
    if (length > kMaxBlob || length + kBlobHeadSize > room || length > *bytesLeft) return false;
    *bytesLeft -= length;
    return file.read(offset + kBlobHeadSize, static_cast<std::size_t>(length), blob);
}

}  // namespace

std::string readRpmNdb(const RandomAccess& file, const TakeBlob& take) {
    std::string bytes;
    if (!file.read(0, kHeaderSize, &bytes)) return "the database is shorter than its header";
    const Bytes header(bytes, Bytes::Order::Little);
    if (header.numberOr0(0, 4) != kDatabaseMagic) return "the file does not begin as such a database does";
    if (header.numberOr0(4, 4) != 0) return "the database has an unknown version";
    const std::uint64_t pages = header.numberOr0(12, 4);
    if (pages > file.size() / kPageSize) return "the database is shorter than its table of slots";
    std::uint64_t bytesLeft = file.size();
    std::string damage;
    for (std::uint64_t page = 0; page < pages; ++page) {
        std::string slots;
        if (!file.read(page * kPageSize, kPageSize, &slots)) return "the table of slots cannot be read";
        for (std::uint64_t at = page == 0 ? kHeaderSize : 0; at < kPageSize; at += kSlotSize) {
            const Bytes slot(std::string_view(slots).substr(at, kSlotSize), Bytes::Order::Little);
            if (slot.numberOr0(0, 4) != kSlotMagic) return "the table of slots is damaged";
            if (slot.numberOr0(8, 4) == 0) continue;  // free
            std::string blob;
            if (readBlob(file, slot, &bytesLeft, &blob)) {
                take(blob);
            } else {
                damage = "a package is damaged";
            }
        }
    }
    return damage;
}
