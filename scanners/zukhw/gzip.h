#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Appends to *text what a file compressed with gzip holds, at most `limit` bytes. False when it is damaged,
// cut or longer; what came before the damage is there.
bool gunzip(std::string_view bytes, std::size_t limit, std::string* text);
