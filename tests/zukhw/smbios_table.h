#pragma once

#include <cstdio>
#include <string>
#include <vector>

// The bytes of one SMBIOS structure: header, fields from offset 4 on, strings.
inline std::string structure(unsigned type, unsigned handle, const std::string& fields,
                             const std::vector<std::string>& strings) {
    std::string bytes{static_cast<char>(type), static_cast<char>(4 + fields.size()),
                      static_cast<char>(handle & 0xFFU), static_cast<char>(handle >> 8)};
    bytes += fields;
    for (const std::string& text : strings) bytes += text + '\0';
    return bytes + (strings.empty() ? std::string(2, '\0') : std::string(1, '\0'));
}

// Bytes as a machine tree takes them: "01 1b ff".
inline std::string hexOf(const std::string& bytes) {
    std::string hex;
    for (const char byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x ", static_cast<unsigned char>(byte));
        hex += digits;
    }
    return hex;
}
