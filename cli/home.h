#pragma once

#include <filesystem>
#include <optional>
#include <string>

// The directory of this very program; empty when the system does not tell.
std::filesystem::path programDirectory();

// The directory of the scanners that belong to this very program: its own one, as in a build folder, or
// the one where an installation keeps them. None when the hardware scanner is in neither.
std::optional<std::string> findHome();
