#pragma once

#include <string>

#include "platform/file_descriptor.h"

// The name of an open file for libraries that open by name: the path that it was found by may lead through
// links of another machine's root.
inline std::string descriptorPath(const FileDescriptor& file) {
    return "/proc/self/fd/" + std::to_string(file.get());
}
