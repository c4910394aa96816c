#pragma once

// Formats like printf and widens the result, one character a byte, sign-extended.
// The caller releases it with free(). Null when the format is at fault or memory is short.
wchar_t* i_wsprintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
