#include "cli/json_text.h"

#include <cwchar>
#include <iterator>

#include "cli/text.h"

namespace {

std::wstring escaped(wchar_t character) {
    wchar_t text[8];
    std::swprintf(text, std::size(text), L"\\u%04x", static_cast<unsigned>(character));
    return text;
}

}  // namespace

std::string quoted(std::wstring_view text) {
    std::wstring out = L"\"";
    for (const wchar_t character : text) {
        if (isUnsafe(character)) {
            out += escaped(character);  // the output may end on a terminal
        } else {
            if (character == L'"' || character == L'\\') out += L'\\';
            out += character;
        }
    }
    return toUtf8(out + L'"');
}

std::string bracketed(char open, const std::vector<std::string>& items, char close, std::size_t depth) {
    std::string out(1, open);
    const std::string newLine = "\n" + std::string(2 * depth, ' ');
    for (const std::string& item : items) {
        if (&item != &items.front()) out += ',';
        out.append(newLine).append("  ").append(item);
    }
    if (!items.empty()) out += newLine;
    return out + close;
}
