#pragma once

#include <string_view>

// Names of memory makers by the codes that JEDEC gives out (JEP106): a bank, told by the number of
// continuation codes before the identity, and the identity. Both may carry their parity bit (the highest).
// Empty for codes that are not in the table.
std::string_view jep106Name(unsigned continuations, unsigned identity);

// The name for a code as firmware leaves it in place of a maker's name: "80CE", "0x80AD", "CE00000000000000",
// "7F7F9E0000000000", "80CE000080CE". Empty when the text is no such code.
std::string_view jep106NameOfText(std::string_view text);
