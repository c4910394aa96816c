#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

// A signature that was found to match, at one place.
struct Software {
    std::wstring guid;
    std::wstring name;  // as the signature file has it
    std::vector<std::pair<std::wstring, std::wstring>> variables;
    std::wstring metadata;  // XML

    // A variable's value; empty when it is not set.
    const std::wstring& value(const wchar_t* variable) const;
    // Where it is: a path if there is one.
    const std::wstring& place() const;
};

// What the scanner has to say besides.
struct Warning {
    std::wstring code;
    std::wstring severity;
    std::wstring guid;  // of the signature it is about; empty: of none
    std::wstring path;  // the first one it is about; empty: none
    std::wstring text;
    std::uint64_t count = 1;
};

// The signatures' names by their GUIDs.
using SignatureNames = std::map<std::wstring, std::wstring>;
