#pragma once

#include <string>

// A whole configuration file as it must be, byte for byte, around the lines that are one scanner's own.
inline std::string expectedConfig(const std::string& lines) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!-- Scanner configuration, written by the zuk library.\n"
           "    Copyright the zuk authors.\n"
           "    Licensed under the Apache License, Version 2.0 (the License);\n"
           "    you may not use this file except in compliance with the License.\n"
           "    You may obtain a copy of the License at\n"
           "    http://www.apache.org/licenses/LICENSE-2.0 -->\n"
           "<KAV xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
           "xsi:noNamespaceSchemaLocation=\"zukcli.xsd\">\n"
           "    <ZUK>\n" +
           lines +
           "    </ZUK>\n"
           "</KAV>\n";
}
