#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "scanners/shared/packages/package.h"

// Profiles of Nix and Guix: what users chose, which lies in a store under names that end in NAME-VERSION.

// "hello-2.12.1" into name and version, which begins behind the first hyphen that no letter follows.
void setNixName(Package& package, std::string_view whole);

// The list of derivations in a `manifest.nix`; no value when its brackets do not close.
std::optional<std::vector<Package>> parseNixManifest(std::string_view text);

// The list of entries in Guix's `manifest`; the same.
std::optional<std::vector<Package>> parseGuixManifest(std::string_view text);
