#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scanners/zuksw/formats/elf.h"

namespace zuksw {

/** The content of the first note of that owner and type; it points into the file's bytes. */
std::optional<std::string_view> findElfNote(const Elf& elf, std::string_view owner, std::uint32_t type);

/** The build id in lower-case hexadecimal digits; empty when there is none. */
std::string elfBuildId(const Elf& elf);

/** What the distribution's packaging wrote into the file. */
struct ElfPackageNote {
    std::string type;  // "deb", "rpm"
    std::string os;
    std::string name;
    std::string version;
    std::string architecture;
};

/** The package note; nothing when there is none or its JSON is malformed. */
std::optional<ElfPackageNote> elfPackageNote(const Elf& elf);

}  // namespace zuksw
