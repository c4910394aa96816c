#pragma once

#include <string>
#include <string_view>
#include <vector>

// Whether `a` comes before `b` when runs of digits count as numbers: sda2 before sda10. Texts that are equal
// in that sense (a1 and a01) are ordered by their bytes, so that the order is always the same.
bool naturalLess(std::string_view a, std::string_view b);

// Less than, equal to or greater than 0, as a stands before b, is b, or stands behind it.
int naturalOrder(std::string_view a, std::string_view b);

void naturalSort(std::vector<std::string>* names);
