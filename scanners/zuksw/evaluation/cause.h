#pragma once

#include <cstdint>
#include <string>

namespace zuksw {

/** Why a question could not be decided. */
enum class Cause : unsigned {
    kUnreadable,    // permission, input or output error
    kNotSearched,   // an area beyond a limit of the search
    kTooLarge,      // a file beyond content/MaxFileSize, or the total
    kChanged,       // a file that changed while it was read
    kDenied,        // content that must not be read
    kAmbiguous,     // more than one answer where one was asked for
    kBadFormat,     // a text that does not parse
    kBadArchive,    // an archive that does not
    kArchiveLimit,  // an archive beyond the limits
    kPackageDb,     // a package database that is damaged or unreadable
    kUnresolved,    // a needed library that is nowhere
    kSignature,     // another signature that is invalid or undecided
    kRowsLimit,
    kTimeBudget,
    kOtherMachine,  // the processes of a machine that does not run
};

/** A set of causes. */
using Causes = std::uint32_t;

constexpr Causes toCauses(Cause cause) {
    return Causes{1} << static_cast<unsigned>(cause);
}

/** "unreadable, too-large" */
std::string describe(Causes causes);

}  // namespace zuksw
