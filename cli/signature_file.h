#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "cli/software.h"

// A signature file, as far as the command needs to know it. The scanner is who judges it.
struct SignatureFile {
    std::string path;  // absolute
    std::string text;
    SignatureNames names;
    std::string mistake;  // why it cannot be joined with others, with the place; empty: it can
    std::size_t innerBegin = 0;
    std::size_t innerEnd = 0;

    // What stands between the tags of the root element. Only without a mistake.
    std::string_view inner() const {
        return std::string_view(text).substr(innerBegin, innerEnd - innerBegin);
    }
};

// Throws Failure when there is no such file or it cannot be read.
SignatureFile readSignatureFile(const std::string& path);
