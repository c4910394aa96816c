#pragma once

#include <string>

// Collapses doubled separators in place. A trailing separator is kept, none is added, and a relative
// path stays relative.
void normalizePath(std::wstring& path);
