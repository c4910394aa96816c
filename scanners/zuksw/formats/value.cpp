#include "scanners/zuksw/formats/value.h"

#include <algorithm>
#include <iterator>

#include "scanners/zuksw/formats/extractors.h"
#include "scanners/zuksw/formats/tree_path.h"
#include "scanners/zuksw/formats/xml_path.h"

namespace zuksw {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// In the order of ValueFormat.
constexpr std::string_view kNames[] = {"keyvalue", "properties", "headers", "ini", "json", "yaml", "xml"};

}  // namespace

std::optional<ValueFormat> valueFormatByName(std::string_view name) {
    const auto* found = std::find(std::begin(kNames), std::end(kNames), name);
    if (found == std::end(kNames)) return std::nullopt;
    return static_cast<ValueFormat>(found - std::begin(kNames));
}

std::string valueKeyProblem(ValueFormat format, std::string_view key) {
    if (format == ValueFormat::kJson || format == ValueFormat::kYaml) return TreePath::problem(key);
    if (format == ValueFormat::kXml) return XmlPath::problem(key);
    return key.empty() ? "a key has at least one character" : "";
}

Values extractValues(ValueFormat format, std::string_view text, std::optional<std::string_view> section,
                     std::string_view key) {
    if (!valueKeyProblem(format, key).empty()) return {};
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) text.remove_prefix(kByteOrderMark.size());
    switch (format) {
        case ValueFormat::kKeyValue:
            return extractKeyValue(text, key);
        case ValueFormat::kProperties:
            return extractProperties(text, key);
        case ValueFormat::kHeaders:
            return extractHeaders(text, key);
        case ValueFormat::kIni:
            return extractIni(text, section, key);
        case ValueFormat::kJson:
            return extractJson(text, key);
        case ValueFormat::kYaml:
            return extractYaml(text, key);
        case ValueFormat::kXml:
            return extractXml(text, key);
    }
    return {};
}

}  // namespace zuksw
