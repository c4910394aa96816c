#include "platform/wide_format.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {
struct Release {
    void operator()(void* block) const { std::free(block); }
};
}  // namespace

wchar_t* i_wsprintf(const char* format, ...) {
    char* text = nullptr;
    va_list args;
    va_start(args, format);
    const int length = vasprintf(&text, format, args);
    va_end(args);
    if (length < 0) return nullptr;

    const std::unique_ptr<char, Release> owner(text);
    const auto size = static_cast<std::size_t>(length) + 1;
    auto* wide = static_cast<wchar_t*>(std::malloc(size * sizeof(wchar_t)));
    if (wide == nullptr) return nullptr;
    for (std::size_t i = 0; i < size; ++i) wide[i] = static_cast<signed char>(text[i]);
    return wide;
}
