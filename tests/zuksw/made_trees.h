#pragma once

#include <string>
#include <utility>
#include <vector>

// A made machine: files of made bytes, and what the catalogue must find in them. Described in
// tests/data/catalogue/THEME.txt.
struct MadeTree {
    enum class Kind { kElf, kGo, kText, kJar, kLink, kGrow };
    struct File {
        Kind kind;
        std::string path;
        std::vector<std::string> arguments;  // content, target or size; a jar: member and content
    };

    std::string theme;
    std::string name;  // the signature that it is for
    std::vector<File> files;
    std::vector<std::pair<std::string, std::string>> presets;
    std::vector<std::string> findings;  // "name | version | path"
};

// Every tree of the catalogue, in the order of the files. Throws where one cannot be read.
std::vector<MadeTree> readMadeTrees();

// The bytes of a file in the tree. hollow: its form without what tells the product.
std::string contentOf(const MadeTree::File& file, bool hollow);
