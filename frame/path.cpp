#include "frame/path.h"

#include <algorithm>

void normalizePath(std::wstring& path) {
    const auto bothSeparators = [](wchar_t a, wchar_t b) { return a == L'/' && b == L'/'; };
    path.erase(std::unique(path.begin(), path.end(), bothSeparators), path.end());
}
