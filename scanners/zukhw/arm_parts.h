#pragma once

#include <string_view>

// The name of an ARM core by the implementer and part fields of its identification register, or empty.
std::string_view armPartName(unsigned implementer, unsigned part);
