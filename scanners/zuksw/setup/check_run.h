#pragma once

#include <string>

namespace zuksw {

/** Explains every mistake in a signature file on standard output. Returns the exit status. */
int checkSignatures(const std::string& path);

}  // namespace zuksw
