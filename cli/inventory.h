#pragma once

#include <string>
#include <utility>
#include <vector>

// One piece of hardware: its fields with their values, in the scanner's order, each name once.
using Instance = std::vector<std::pair<std::wstring, std::wstring>>;

// What a scan found of one group.
struct Group {
    int number;
    std::wstring name;
    std::vector<Instance> instances;
};
