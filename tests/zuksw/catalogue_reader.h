#pragma once

#include <string>
#include <vector>

// What the checks of the catalogue need to know about one of its signatures.
struct CatalogueEntry {
    std::string file;
    std::string guid;
    std::string name;
    bool perMachine = false;
    std::string place;
    std::vector<std::string> variables;  // "name=value"
    std::vector<std::string> metadata;   // names of the elements
};

// The paths of signatures/*.xml, sorted.
std::vector<std::string> catalogueFiles();

// All signatures of the catalogue.
std::vector<CatalogueEntry> readCatalogue();

// All signatures as text, without the root elements.
std::string catalogueText();
