#pragma once

#include <string>
#include <vector>

#include "cli/page.h"
#include "cli/software.h"

// What was found as text for people: a row a place, in the order given.
std::wstring softwareAsText(const std::vector<Software>& found, const Page& page);

// The warnings, those of the same code together; empty when there are none. A signature that a text names by
// its GUID is named by its name.
std::wstring warningsAsText(const std::vector<Warning>& warnings, const SignatureNames& names);
