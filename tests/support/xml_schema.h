#pragma once

#include <string>

#include "tests/support/shell.h"

// The judge of XML files. A test without it is skipped.
inline bool haveXmllint() {
    return shell("xmllint --version").status == 0;
}

// Empty when the files, as words of a command line, are valid by that schema of schemas/; else what xmllint
// says.
inline std::string schemaComplaint(const std::string& schema, const std::string& files) {
    const ShellResult result =
        shell("xmllint --noout --schema " + quoted(ZUK_SOURCE_DIR "/schemas/" + schema) + " " + files);
    return result.status == 0 ? "" : result.err;
}
