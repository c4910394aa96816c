#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/shared/packages/package.h"

// A header as rpm keeps it for every package, whatever the database around it: two counts, an index of tags,
// and the data that it points into; all numbers big-endian.

// The package of a header; no value when the header is damaged or lacks name, version or release.
std::optional<Package> parseRpmHeader(std::string_view blob);

// True for the keys that rpm keeps among the packages.
bool isRpmKey(const Package& package);

// Calls `owned` with the path of every file in the header ("/usr/bin/bash").
void forEachRpmPath(std::string_view blob, const std::function<void(const std::string&)>& owned);
