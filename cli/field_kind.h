#pragma once

#include <string_view>

enum class FieldKind { Text, Number, Flag };

// What the values of a field are, judged by its name alone, so that a program that reads them meets one
// kind only. Numbers measure, count or order something: their names end in a unit, or are listed. Serial
// numbers, versions, hexadecimal identifiers and all fields not known here are text.
FieldKind fieldKind(std::wstring_view name);

// True for a plain decimal number: no leading zeros, a fraction perhaps, no exponent.
bool isNumber(std::wstring_view value);

// Names that are listed may still carry words ("N/A", "0042"): only a value of the right shape is taken
// for more than text.
FieldKind valueKind(std::wstring_view name, std::wstring_view value);
