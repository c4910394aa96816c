#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "scanners/shared/packages/package.h"

// The package of one `local/NAME-VERSION/desc` of pacman's database; no value when name or version is
// missing.
std::optional<Package> parsePacmanDesc(std::string_view text);

// Calls `owned` with every path of a `files` text, relative to the root; directories are left out.
void forEachPacmanPath(std::string_view text, const std::function<void(std::string_view)>& owned);
