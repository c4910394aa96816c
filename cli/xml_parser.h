#pragma once

#include <expat.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "cli/text.h"

struct FreeXmlParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using XmlParser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeXmlParser>;

// The value of one of an element's attributes, empty when it has none of that name.
inline std::wstring attributeOf(const XML_Char** attributes, std::string_view name) {
    for (; attributes[0] != nullptr; attributes += 2) {
        if (attributes[0] == name) return fromLocale(attributes[1]);
    }
    return {};
}
