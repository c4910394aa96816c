#pragma once

#include <string>
#include <vector>

// The signature files of the catalogue that belongs to this very program: in the folder "signatures" beside
// it, as in a build folder, or where an installation keeps them. Throws Failure when there is none.
std::vector<std::string> shippedCatalogue();

// The files *.xml of a directory, in byte order of their names. Throws Failure when there is none.
std::vector<std::string> catalogueIn(const std::string& directory);
