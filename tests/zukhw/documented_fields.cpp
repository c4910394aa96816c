#include "tests/zukhw/documented_fields.h"

#include "scanners/zukhw/text.h"
#include "tests/support/files.h"

namespace {

constexpr std::string_view kHeading = "## ";
constexpr std::string_view kRow = "| ";

std::string documentText() {
    return readFile(std::string(ZUK_SOURCE_DIR) + "/docs/fields.md");
}

bool isFieldRow(std::string_view line) {
    return startsWith(line, kRow) && !startsWith(line, "| Field |");
}

DocumentedField fieldOf(std::string_view row) {
    const std::vector<std::string_view> cells = split(row, '|');
    const bool isVolatile = cells.size() > 2 && cells[2].find("(v)") != std::string_view::npos;
    return {std::string(trim(cells[1])), isVolatile};
}

}  // namespace

DocumentedFields readDocumentedFields() {
    DocumentedFields fields;
    std::string group;
    const std::string text = documentText();
    for (const std::string_view line : lines(text)) {
        if (startsWith(line, kHeading)) group = trim(line.substr(kHeading.size()));
        if (isFieldRow(line)) fields[group].push_back(fieldOf(line));
    }
    return fields;
}

std::vector<std::string> documentedGroups() {
    std::vector<std::string> groups;
    const std::string text = documentText();
    for (const std::string_view line : lines(text)) {
        if (startsWith(line, kHeading)) groups.emplace_back(trim(line.substr(kHeading.size())));
    }
    return groups;
}
