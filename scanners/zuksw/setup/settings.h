#pragma once

#include <string_view>
#include <vector>

#include "scanners/zuksw/setup/configuration.h"

namespace zuksw {

/** One attribute of one plug-in. */
struct Setting {
    const char* plugin;
    const char* attribute;
    /** Takes the value; false when it cannot be parsed, and then nothing has changed. */
    bool (*apply)(std::string_view value, Configuration* configuration);
    const char* expected;  // for a message
};

const std::vector<Setting>& settings();

}  // namespace zuksw
