#include "scanners/zuksw/formats/archive.h"

#include <archive.h>
#include <archive_entry.h>
#include <locale.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace zuksw {

namespace {

struct FreeArchive {
    void operator()(archive* handle) const { archive_read_free(handle); }
};
using Handle = std::unique_ptr<archive, FreeArchive>;

// libarchive converts names that are marked as UTF-8 into the characters of the thread's locale, and loses
// those that these do not have: outside of UTF-8 all that is not ASCII.
class Utf8Locale {
  public:
    Utf8Locale() : before_(::uselocale(utf8())) {}
    ~Utf8Locale() { ::uselocale(before_); }
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

  private:
    // Null on a system without it: then the thread's own stays.
    static locale_t utf8() {
        static const locale_t kUtf8 = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return kUtf8;
    }

    locale_t before_;
};

// Small archives of very even content are far beyond any ratio, and harmless.
constexpr std::uint64_t kRatioMatters = std::uint64_t(1) << 20U;

// What libarchive answers for files that are none of its formats; its own name for it is not public.
constexpr int kUnknownFormat = EILSEQ;

Handle open(std::string_view bytes) {
    Handle handle(archive_read_new());
    if (!handle) throw std::bad_alloc();
    archive_read_support_format_zip(handle.get());
    archive_read_support_format_tar(handle.get());
    archive_read_support_format_ar(handle.get());
    archive_read_support_format_cpio(handle.get());
    archive_read_support_filter_gzip(handle.get());
    archive_read_support_filter_xz(handle.get());
    archive_read_support_filter_zstd(handle.get());
    archive_read_open_memory(handle.get(), bytes.data(), bytes.size());
    return handle;
}

std::string problemOf(archive* handle) {
    const char* text = archive_error_string(handle);
    return text != nullptr ? text : "the archive cannot be read";
}

// Names in another encoding come only in UTF-8; all others as the bytes that are stored. Nothing for a name
// that could not be converted.
std::optional<std::string> nameOf(archive_entry* entry) {
    const char* stored = archive_entry_pathname(entry);
    if (stored == nullptr) stored = archive_entry_pathname_utf8(entry);
    if (stored == nullptr) return std::nullopt;
    std::string_view name = stored;
    while (name.substr(0, 2) == "./" || name.substr(0, 1) == "/")
        name.remove_prefix(name.front() == '/' ? 1 : 2);
    return std::string(name);
}

class Reading {
  public:
    Reading(std::string_view bytes, const ArchiveLimits& limits, const std::function<bool()>& mayGoOn)
        : bytes_(bytes), limits_(limits), mayGoOn_(mayGoOn), handle_(open(bytes)) {}

    ArchiveOutcome run(const std::function<bool(std::string_view)>& wanted,
                       const std::function<void(ArchiveMember)>& take) {
        for (std::uint64_t count = 0; goesOn(); ++count) {
            archive_entry* entry = nullptr;
            const int status = archive_read_next_header(handle_.get(), &entry);
            if (status == ARCHIVE_EOF) break;
            if (status != ARCHIVE_OK && status != ARCHIVE_WARN) {
                fail(isForeign(count) ? ArchiveState::kNotAnArchive : ArchiveState::kDamaged,
                     problemOf(handle_.get()));
            } else if (count == limits_.maxMembers) {
                fail(ArchiveState::kLimit, "the archive has too many members");
            } else {
                readEntry(entry, wanted, take);
            }
        }
        return std::move(outcome_);
    }

  private:
    bool goesOn() {
        if (outcome_.state == ArchiveState::kOk && !mayGoOn_()) fail(ArchiveState::kStopped, "stopped");
        return outcome_.state == ArchiveState::kOk;
    }

    void fail(ArchiveState state, std::string problem) {
        outcome_.state = state;
        outcome_.problem = std::move(problem);
    }

    bool isForeign(std::uint64_t membersBefore) const {
        return membersBefore == 0 && archive_errno(handle_.get()) == kUnknownFormat &&
               archive_format(handle_.get()) == 0;
    }

    void readEntry(archive_entry* entry, const std::function<bool(std::string_view)>& wanted,
                   const std::function<void(ArchiveMember)>& take) {
        const bool file =
            archive_entry_filetype(entry) == AE_IFREG && archive_entry_hardlink(entry) == nullptr;
        const std::optional<std::string> name = file ? nameOf(entry) : "";
        if (!name) {
            take({{}, ArchiveState::kDamaged, {}});  // it may be one that is wanted
            return skip();
        }
        if (name->empty() || !wanted(*name)) return skip();
        ArchiveMember member;
        member.name = *name;
        const std::int64_t size = archive_entry_size_is_set(entry) != 0 ? archive_entry_size(entry) : 0;
        if (archive_entry_is_data_encrypted(entry) != 0) {
            member.state = ArchiveState::kEncrypted;
        } else if (size < 0 || static_cast<std::uint64_t>(size) > limits_.maxMemberSize) {
            member.state = ArchiveState::kLimit;
        } else {
            readContent(&member);
        }
        if (member.state != ArchiveState::kOk) member.content = {};
        const bool left = member.state == ArchiveState::kEncrypted || member.state == ArchiveState::kLimit;
        if (outcome_.state == ArchiveState::kStopped) return;
        take(std::move(member));
        if (left) skip();
    }

    void readContent(ArchiveMember* member) {
        while (true) {
            const void* block = nullptr;
            std::size_t size = 0;
            la_int64_t offset = 0;
            const int status = archive_read_data_block(handle_.get(), &block, &size, &offset);
            if (status == ARCHIVE_EOF) return;
            if (status < ARCHIVE_OK) {
                member->state = ArchiveState::kDamaged;
                return;
            }
            const auto begin = static_cast<std::uint64_t>(offset);
            if (offset < 0 || begin < member->content.size() || begin + size > limits_.maxMemberSize ||
                !spend(size)) {
                member->state = ArchiveState::kLimit;
                return;
            }
            member->content.resize(begin);  // sparse files have holes
            member->content.append(static_cast<const char*>(block), size);
        }
    }

    // What lies in a compressed stream has to be inflated to be passed over, and that counts too.
    void skip() {
        const bool stream = archive_filter_count(handle_.get()) > 1;
        if (!stream) {
            const int status = archive_read_data_skip(handle_.get());
            if (status < ARCHIVE_WARN) fail(ArchiveState::kDamaged, problemOf(handle_.get()));
            return;
        }
        while (outcome_.state == ArchiveState::kOk) {
            const void* block = nullptr;
            std::size_t size = 0;
            la_int64_t offset = 0;
            const int status = archive_read_data_block(handle_.get(), &block, &size, &offset);
            if (status != ARCHIVE_OK) return;  // the next header tells of damage
            spend(size);
        }
    }

    // False when so many more bytes are too many.
    bool spend(std::uint64_t size) {
        outcome_.inflated += size;
        const std::uint64_t allowed =
            bytes_.size() > UINT64_MAX / limits_.maxRatio ? UINT64_MAX : bytes_.size() * limits_.maxRatio;
        if (outcome_.inflated > limits_.maxTotal) {
            fail(ArchiveState::kLimit, "the archive inflates to more than is allowed");
        } else if (outcome_.inflated > kRatioMatters && outcome_.inflated > allowed) {
            fail(ArchiveState::kLimit, "the archive is packed more densely than is allowed");
        }
        return goesOn();
    }

    std::string_view bytes_;
    const ArchiveLimits& limits_;
    const std::function<bool()>& mayGoOn_;
    Handle handle_;
    ArchiveOutcome outcome_;
};

}  // namespace

ArchiveOutcome readArchive(std::string_view bytes, const ArchiveLimits& limits,
                           const std::function<bool(std::string_view name)>& wanted,
                           const std::function<void(ArchiveMember)>& take,
                           const std::function<bool()>& mayGoOn) {
    const Utf8Locale utf8;
    return Reading(bytes, limits, mayGoOn).run(wanted, take);
}

}  // namespace zuksw
