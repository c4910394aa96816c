#pragma once

#include <string_view>
#include <vector>

// Lists hold text joined with "; ", or numbers joined so, or "name=value" joined so, where a value may hold
// the separator, too; Words are joined with a blank.
enum class FieldKind { Text, Number, Flag, List, NumberList, PairList, Words };

// What the values of a field are, judged by its group and name alone, so that a program that reads them meets
// one kind only. Numbers measure, count or order something: their names end in a unit, or are listed. Serial
// numbers, versions, hexadecimal identifiers and all fields not known here are text.
FieldKind fieldKind(std::wstring_view group, std::wstring_view name);

// True for a plain decimal number: no leading zeros, a fraction perhaps, no exponent.
bool isNumber(std::wstring_view value);

// The items of a list's value.
std::vector<std::wstring_view> listItems(FieldKind kind, std::wstring_view value);
