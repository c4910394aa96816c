#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** The text formats that single values are taken from. */
enum class ValueFormat { kKeyValue, kProperties, kHeaders, kIni, kJson, kYaml, kXml };

/** The format that signatures call `name` ("keyvalue", "properties", ...); nothing when there is none. */
std::optional<ValueFormat> valueFormatByName(std::string_view name);

/** What is wrong with `key` as a key of that format, for the author; empty when it is good. */
std::string valueKeyProblem(ValueFormat format, std::string_view key);

/** The values of one key. */
struct Values {
    std::vector<std::string> found;  ///< in the order in which they stand in the text
    bool malformed = false;          ///< json, yaml and xml only; then `found` means nothing
};

/** Every value that `key` names in `text`.
 *  section  of ini files: only in sections of this name, the empty name for what stands before the first;
 *           nothing for all sections. Other formats take no notice of it.
 *  key      keyvalue, properties, headers, ini: the name, without case for headers; json and yaml: a JSON
 *           Pointer in which `*` stands for any member or element; xml: a path of element names. A key with
 *           a problem finds nothing.
 *  Lines that do not fit keyvalue, properties, headers or ini are passed over. json, yaml and xml deeper than
 *  64 levels, yaml with aliases and xml with a DOCTYPE count as malformed. Time and memory are linear in the
 *  length of the text. */
Values extractValues(ValueFormat format, std::string_view text, std::optional<std::string_view> section,
                     std::string_view key);

}  // namespace zuksw
