#include "cli/event.h"

#include <cstdlib>

#include "cli/xml_parser.h"

namespace {

struct Reading {
    Warning warning;
    std::string text;
};

void onStart(void* data, const XML_Char*, const XML_Char** attributes) {
    Warning& warning = static_cast<Reading*>(data)->warning;
    warning.code = attributeOf(attributes, "code");
    warning.severity = attributeOf(attributes, "severity");
    warning.guid = attributeOf(attributes, "guid");
    warning.path = attributeOf(attributes, "path");
    if (const std::wstring count = attributeOf(attributes, "count"); !count.empty()) {
        warning.count = std::wcstoull(count.c_str(), nullptr, 10);
    }
}

void onText(void* data, const XML_Char* text, int length) {
    static_cast<Reading*>(data)->text.append(text, static_cast<std::size_t>(length));
}

}  // namespace

Warning readEvent(const std::wstring& xml) {
    const std::string bytes = wideAsBytes(xml);
    Reading reading;
    const XmlParser parser(XML_ParserCreate("UTF-8"));
    XML_SetUserData(parser.get(), &reading);
    XML_SetStartElementHandler(parser.get(), onStart);
    XML_SetCharacterDataHandler(parser.get(), onText);
    // The library has read it before: there is no malformed one.
    XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), 1);
    reading.warning.text = fromLocale(reading.text.c_str());
    return reading.warning;
}
