#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "scanners/zuksw/formats/value.h"

namespace zuksw {

// One function a format; see extractValues.

constexpr int kMaxValueDepth = 64;

/** What a shell makes of the text behind NAME=: quotes and a comment go. Nothing when a quote is not closed.
 */
std::optional<std::string> shellValue(std::string_view text);

Values extractKeyValue(std::string_view text, std::string_view key);
Values extractProperties(std::string_view text, std::string_view key);
Values extractHeaders(std::string_view text, std::string_view key);
Values extractIni(std::string_view text, std::optional<std::string_view> section, std::string_view key);
Values extractJson(std::string_view text, std::string_view pointer);
Values extractYaml(std::string_view text, std::string_view pointer);
Values extractXml(std::string_view text, std::string_view path);

}  // namespace zuksw
