#pragma once

#include <string>
#include <string_view>

#include "platform/xml_node.h"

// A diagnostic message. Bytes outside ASCII become '?': a logger that prints wide text through the C locale
// would lose the whole message otherwise.
inline String asciiMessage(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char c : text)
        wide.push_back(static_cast<signed char>(c) < 0 ? L'?' : static_cast<wchar_t>(c));
    return String(wide.c_str());
}
