#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zuksw {

/** How a literal text stands in a file. */
struct LiteralForm {
    enum class Encoding { kBytes, kUtf16Le, kUtf16Be };
    Encoding encoding = Encoding::kBytes;
    bool ignoreCase = false;  // of the letters a to z
};

/** A pattern that finds the UTF-8 text in that form. */
std::string literalPattern(std::string_view text, const LiteralForm& form);

/** A pattern for "7f 45 ?? 46": bytes in hex, ?? for any, blanks between them if wanted. Nothing for anything
 *  else, the empty text included. */
std::optional<std::string> hexPattern(std::string_view text);

}  // namespace zuksw
