#pragma once

#include <vector>

#include "cli/signature_file.h"
#include "cli/software.h"

// Several files reach the scanner as one, so the lines that its warnings name are of none of them: puts the
// name of the signature's own file in their place.
void nameFilesForLines(std::vector<Warning>& warnings, const std::vector<SignatureFile>& files);
