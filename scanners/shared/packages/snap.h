#pragma once

#include <string_view>

#include "scanners/shared/packages/package.h"

// The package that a snap's `meta/snap.yaml` describes; the version is empty when the text does not tell it.
Package parseSnapYaml(std::string_view text);
