#pragma once

#include <string_view>

// Whether a hardware string (cleaned as cleanText does it) is what a maker leaves in place of a value that
// was never filled in. Empty text is one.
bool isPlaceholder(std::string_view text);

// The same for a UUID in its text form of 36 characters.
bool isPlaceholderUuid(std::string_view uuid);
