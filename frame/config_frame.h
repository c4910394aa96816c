#pragma once

// How every scanner configuration file begins and ends; between them stands one element that tells one
// scanner what to do.
extern const char kConfigHead[];
extern const char kConfigFoot[];
