#pragma once

#include <string>

// Makes sure that no file opened later becomes standard input, output or error by chance.
void fillStandardStreams();

// Writes all of it. Throws Failure when the text did not reach its destination.
void writeStandardOutput(const std::string& text);
