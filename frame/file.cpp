#include "frame/file.h"

#include <cstring>

#include "frame/narrow.h"

File openForWriting(const std::wstring& path) {
    return File(std::fopen(narrow(path).c_str(), "we"));
}

bool writeText(std::FILE* stream, const char* text) {
    if (text == nullptr) return false;
    const std::size_t length = std::strlen(text);
    return std::fwrite(text, 1, length, stream) == length;
}

bool flush(std::FILE* stream) {
    return std::fflush(stream) == 0;
}
