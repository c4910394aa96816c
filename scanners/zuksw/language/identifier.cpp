#include "scanners/zuksw/language/identifier.h"

namespace zuksw {
namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

bool isIdentifier(std::string_view text) {
    if (text.empty() || text.size() > 64 || !isLetter(text.front())) return false;
    for (const char c : text) {
        if (!isLetter(c) && !isDigit(c)) return false;
    }
    return true;
}

}  // namespace zuksw
