#include "cli/sw_settings.h"

#include "cli/failure.h"
#include "cli/text.h"

namespace {

std::string reference(char c) {
    return "&#" + std::to_string(static_cast<int>(c)) + ";";
}

}  // namespace

Preset parsePreset(const std::string& text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || sign == 0) {
        throw Failure(kWrongUsage, "--set takes NAME=VALUE or NAME=VALUE@GUID, not '" + text + "'");
    }
    const std::size_t at = text.rfind('@');
    const bool scoped = at != std::string::npos && at > sign;
    const std::string value = text.substr(sign + 1, scoped ? at - sign - 1 : std::string::npos);
    return {text.substr(0, sign), value, scoped ? text.substr(at + 1) : ""};
}

PluginSetting parsePluginSetting(const std::string& text) {
    const std::size_t sign = text.find('=');
    const std::size_t dot = text.find('.');
    if (sign == std::string::npos || dot == std::string::npos || dot == 0 || dot + 1 >= sign) {
        throw Failure(kWrongUsage, "--plugin takes PLUGIN.ATTRIBUTE=VALUE, not '" + text + "'");
    }
    return {text.substr(0, dot), text.substr(dot + 1, sign - dot - 1), text.substr(sign + 1)};
}

std::wstring asAttribute(const std::string& text) {
    std::string xml;
    for (const char c : text) {
        const bool blank = c == '\t' || c == '\n' || c == '\r';
        if (static_cast<unsigned char>(c) < ' ' && !blank) {
            throw Failure(kWrongUsage, "a setting holds a control character, which no XML file can carry");
        }
        const bool markup = c == '&' || c == '<' || c == '>' || c == '"';
        xml += blank || markup ? reference(c) : std::string(1, c);
    }
    return bytesAsWide(xml);
}
