#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zuksw {

struct ArchiveLimits {
    std::uint64_t maxMembers = 100000;
    std::uint64_t maxMemberSize = std::uint64_t(16) << 20U;
    std::uint64_t maxTotal = std::uint64_t(512) << 20U;  ///< bytes of all members inflated, wanted or not
    std::uint64_t maxRatio = 200;                        ///< inflated bytes for each byte of the archive
};

enum class ArchiveState {
    kOk,
    kNotAnArchive,  ///< none of the formats that are read
    kDamaged,
    kEncrypted,
    kLimit,    ///< more than the limits allow
    kStopped,  ///< the caller did not want to go on
};

struct ArchiveMember {
    std::string name;  ///< as stored, without "./" or "/" at its beginning; never to be used as a path
    ArchiveState state = ArchiveState::kOk;
    std::string content;  ///< whole; empty unless the state is kOk
};

struct ArchiveOutcome {
    ArchiveState state = ArchiveState::kOk;  ///< of the archive; single members may have a worse one
    std::string problem;                     ///< for people; empty when the state is kOk
    std::uint64_t inflated = 0;              ///< bytes that were inflated, to be counted against MaxTotal
};

/** Reads a zip (jar, war, ear, whl), tar (plain or compressed by gzip, xz or zstd), Debian package or cpio
 * archive. Only regular files count as members. The limits are checked while inflating, so no archive costs
 * more memory than its largest member may have, and what the format itself asks for (up to 128 MiB for zstd's
 * window).
 *   wanted   asked for each member by name
 *   take     receives those wanted, in the order of the archive; the ones before some damage come all the
 * same mayGoOn  asked before each member and each block; the answer false ends the reading */
ArchiveOutcome readArchive(std::string_view bytes, const ArchiveLimits& limits,
                           const std::function<bool(std::string_view name)>& wanted,
                           const std::function<void(ArchiveMember)>& take,
                           const std::function<bool()>& mayGoOn);

}  // namespace zuksw
