#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The questions that the benchmark of the software scanner asks, as files for it and for other tools.

// What stands inside the root of a signature file.
std::string signaturesIn(const std::string& path);
// Signatures that look for files of names that no two of them share, and that no machine has.
std::string namedSignatures(std::size_t count);
// Signatures that are decided without a walk: packages, paths and facts of the system.
std::string signaturesWithoutWalk(std::size_t count);
// One signature for each name: is there a file of that name below `directory`?
std::string fileSignatures(const std::vector<std::string>& names, const std::string& directory);
// The same question in OVAL.
std::string fileDefinitions(const std::vector<std::string>& names, const std::string& directory);
// One signature for each pattern: is there a file below `directory` that it matches somewhere?
std::string contentSignatures(const std::vector<std::string>& patterns, const std::string& directory);
// The same question as rules for yara.
std::string contentRules(const std::vector<std::string>& patterns);

// A complete signature file.
std::string signatureFile(const std::string& signatures);
// A configuration file: at most `threads` threads (0: as many as the scanner likes), `root` to be searched,
// and not nicer than the tools that it is compared with.
std::string scanConfiguration(const std::string& root, unsigned threads);
