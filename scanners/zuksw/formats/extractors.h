#pragma once

#include <optional>
#include <string_view>

#include "scanners/zuksw/formats/value.h"

namespace zuksw {

// One function a format; see extractValues.

constexpr int kMaxValueDepth = 64;

Values extractKeyValue(std::string_view text, std::string_view key);
Values extractProperties(std::string_view text, std::string_view key);
Values extractHeaders(std::string_view text, std::string_view key);
Values extractIni(std::string_view text, std::optional<std::string_view> section, std::string_view key);
Values extractJson(std::string_view text, std::string_view pointer);
Values extractYaml(std::string_view text, std::string_view pointer);
Values extractXml(std::string_view text, std::string_view path);

}  // namespace zuksw
