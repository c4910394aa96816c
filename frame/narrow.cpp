#include "frame/narrow.h"

#include <algorithm>

std::string narrow(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) bytes.push_back(static_cast<char>(character));
    return bytes;
}

std::wstring widen(std::string_view text) {
    std::wstring wide;
    appendWidened(wide, text);
    return wide;
}

void appendWidened(std::wstring& wide, std::string_view text) {
    const std::size_t before = wide.size();
    wide.resize(before + text.size());
    std::transform(text.begin(), text.end(), wide.begin() + static_cast<std::ptrdiff_t>(before),
                   [](char byte) { return static_cast<wchar_t>(static_cast<signed char>(byte)); });
}
