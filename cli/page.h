#pragma once

#include <cstddef>

// What a readable text is laid out for.
struct Page {
    std::size_t width = 100;  // columns to keep to where the content allows
    bool clip = false;        // cut or wrap what is wider; a file gets everything, whatever its width
};

// The terminal behind standard output, or a page for a file.
Page standardPage();
