#pragma once

#include <cstdio>
#include <memory>
#include <string>

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Opens the file for writing, created or truncated; null when that fails.
File openForWriting(const std::wstring& path);

// Writes the whole text; true when every byte was taken. A null text is a failed write.
bool writeText(std::FILE* stream, const char* text);

// Hands what is buffered to the system: a full disk shows here, not in the writes before it.
bool flush(std::FILE* stream);
