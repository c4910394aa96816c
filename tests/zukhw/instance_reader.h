#pragma once

#include <string>
#include <utility>
#include <vector>

// One instance of a group as it stands in a scanner's document.
struct Instance {
    std::string group;
    std::vector<std::pair<std::string, std::string>> fields;

    // The first value of that name, or null.
    const std::string* find(const std::string& name) const;
};

// The instances of a document, in order. Throws std::runtime_error when it is not well-formed.
std::vector<Instance> readInstances(const std::string& document);
