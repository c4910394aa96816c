#pragma once

#include <string_view>

// The company behind the three letters by which displays name their maker (PNP id), for machines without a
// hardware database; empty for those not known here.
std::string_view displayMaker(std::string_view letters);
