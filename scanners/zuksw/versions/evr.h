#pragma once

#include <optional>
#include <string_view>

namespace zuksw {

/** `[epoch:]version[-release]`, as rpm and pacman write a package's version. */
struct Evr {
    std::string_view epoch;  // digits; empty when missing, which counts as 0
    std::string_view version;
    std::optional<std::string_view> release;
};

/** The parts of `text`; they point into it. */
Evr parseEvr(std::string_view text);

/** Takes one run of digits or of letters off each text and compares them; neither text is empty, and each
 *  begins with a digit or a letter. A run of digits is newer than anything else. */
int compareRuns(std::string_view& a, std::string_view& b);

using ComparePart = int (*)(std::string_view, std::string_view);

/** Epochs as numbers, then versions, then releases when both sides have one. */
int compareEvr(const Evr& a, const Evr& b, ComparePart comparePart);

}  // namespace zuksw
