#include "scanners/shared/packages/rpm_header.h"

#include <climits>
#include <cstdint>
#include <vector>

#include "scanners/shared/bytes.h"

namespace {

// The limits that rpm itself sets: 64 Ki tags, 256 MiB of data.
constexpr std::uint64_t kMaxTags = 0xFFFF;
constexpr std::uint64_t kMaxData = 256U << 20U;
constexpr std::uint64_t kEntrySize = 16;

enum Tag : std::uint32_t {
    kName = 1000,
    kVersion = 1001,
    kRelease = 1002,
    kEpoch = 1003,
    kSummary = 1004,
    kInstallTime = 1008,
    kSize = 1009,
    kVendor = 1011,
    kLicense = 1014,
    kPackager = 1015,
    kGroup = 1016,
    kArchitecture = 1022,
    kSourceRpm = 1044,
    kDirIndexes = 1116,
    kBaseNames = 1117,
    kDirNames = 1118,
    kLongSize = 5009,
};

enum Type : std::uint32_t { kInt32 = 4, kInt64 = 5, kString = 6, kStringArray = 8, kI18nString = 9 };

struct Entry {
    std::uint32_t type = 0;
    std::uint64_t offset = 0;  // in the data
    std::uint64_t count = 0;
};

class Header {
  public:
    static std::optional<Header> parse(std::string_view blob) {
        const Bytes bytes(blob, Bytes::Order::Big);
        const auto tags = bytes.number(0, 4);
        const auto dataSize = bytes.number(4, 4);
        if (!tags || !dataSize || *tags > kMaxTags || *dataSize > kMaxData) return std::nullopt;
        const auto index = bytes.piece(8, *tags * kEntrySize);
        const auto data = bytes.piece(8 + *tags * kEntrySize, *dataSize);
        if (!index || !data) return std::nullopt;
        return Header(*index, *data);
    }

    // The first text of a tag; of translations the first is the untranslated one. Empty when it is missing.
    std::string_view text(std::uint32_t tag) const {
        const std::optional<Entry> entry = find(tag);
        if (!entry || (entry->type != kString && entry->type != kStringArray && entry->type != kI18nString))
            return {};
        return data_.text(entry->offset, data_.size()).value_or("");
    }

    std::optional<std::uint64_t> number(std::uint32_t tag) const {
        const std::optional<Entry> entry = find(tag);
        if (!entry || entry->count == 0) return std::nullopt;
        if (entry->type == kInt32) return data_.number(entry->offset, 4);
        if (entry->type == kInt64) return data_.number(entry->offset, 8);
        return std::nullopt;
    }

    // Texts stand one behind the other, so the walk ends with the data whatever the count says.
    std::vector<std::string_view> texts(std::uint32_t tag) const {
        std::vector<std::string_view> all;
        const std::optional<Entry> entry = find(tag);
        if (!entry || entry->type != kStringArray) return all;
        std::uint64_t offset = entry->offset;
        for (std::uint64_t i = 0; i < entry->count; ++i) {
            const auto text = data_.text(offset, data_.size());
            if (!text) break;
            all.push_back(*text);
            offset += text->size() + 1;
        }
        return all;
    }

    std::vector<std::uint64_t> numbers(std::uint32_t tag) const {
        std::vector<std::uint64_t> all;
        const std::optional<Entry> entry = find(tag);
        if (!entry || entry->type != kInt32) return all;
        for (std::uint64_t i = 0; i < entry->count; ++i) {
            const auto number = data_.number(entry->offset + i * 4, 4);
            if (!number) break;
            all.push_back(*number);
        }
        return all;
    }

  private:
    Header(std::string_view index, std::string_view data)
        : index_(index, Bytes::Order::Big), data_(data, Bytes::Order::Big) {}

    std::optional<Entry> find(std::uint32_t tag) const {
        for (std::uint64_t at = 0; at < index_.size(); at += kEntrySize) {
            if (index_.numberOr0(at, 4) != tag) continue;
            return Entry{static_cast<std::uint32_t>(index_.numberOr0(at + 4, 4)), index_.numberOr0(at + 8, 4),
                         index_.numberOr0(at + 12, 4)};
        }
        return std::nullopt;
    }

    Bytes index_;
    Bytes data_;
};

// "bash-5.1.8-1.src.rpm" is built from bash.
std::string_view sourceName(std::string_view sourceRpm) {
    for (int parts = 0; parts < 2; ++parts) {
        const auto hyphen = sourceRpm.rfind('-');
        if (hyphen == std::string_view::npos) return {};
        sourceRpm = sourceRpm.substr(0, hyphen);
    }
    return sourceRpm;
}

std::string_view firstLine(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

void setVersion(Package& package, const Header& header) {
    package.upstream = header.text(kVersion);
    package.revision = header.text(kRelease);
    if (const auto epoch = header.number(kEpoch)) package.epoch = std::to_string(*epoch);
    if (!package.epoch.empty()) package.version = package.epoch + ":";
    package.version += package.upstream + "-" + package.revision;
}

}  // namespace

std::optional<Package> parseRpmHeader(std::string_view blob) {
    const std::optional<Header> header = Header::parse(blob);
    if (!header) return std::nullopt;
    Package package;
    package.manager = "rpm";
    package.name = header->text(kName);
    setVersion(package, *header);
    package.architecture = header->text(kArchitecture);
    package.vendor = header->text(kVendor);
    package.maintainer = header->text(kPackager);
    package.summary = firstLine(header->text(kSummary));
    package.section = header->text(kGroup);
    package.source = sourceName(header->text(kSourceRpm));
    package.license = header->text(kLicense);
    package.installedBytes = header->number(kLongSize);
    if (!package.installedBytes) package.installedBytes = header->number(kSize);
    if (const auto time = header->number(kInstallTime))
        package.installTime = static_cast<std::int64_t>(*time);
    if (package.name.empty() || package.upstream.empty() || package.revision.empty()) return std::nullopt;
    return package;
}

bool isRpmKey(const Package& package) {
    return package.name == "gpg-pubkey";
}

void forEachRpmPath(std::string_view blob, const std::function<void(const std::string&)>& owned) {
    const std::optional<Header> header = Header::parse(blob);
    if (!header) return;
    const std::vector<std::string_view> names = header->texts(kBaseNames);
    const std::vector<std::string_view> folders = header->texts(kDirNames);
    const std::vector<std::uint64_t> indexes = header->numbers(kDirIndexes);
    for (std::size_t i = 0; i < names.size() && i < indexes.size(); ++i) {
        if (indexes[i] >= folders.size()) continue;
        // A made header can name one endless folder for every file.
        if (folders[indexes[i]].size() + names[i].size() >= PATH_MAX) continue;
        owned(std::string(folders[indexes[i]]).append(names[i]));
    }
}
