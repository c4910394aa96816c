#include "frame/narrow.h"

std::string narrow(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) bytes.push_back(static_cast<char>(character));
    return bytes;
}

std::wstring widen(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char byte : text) wide.push_back(static_cast<signed char>(byte));
    return wide;
}
