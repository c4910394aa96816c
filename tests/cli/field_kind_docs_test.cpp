#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "cli/field_kind.h"

namespace {

// The n-th cell of a row of a table, without the blanks around it; empty when there is none.
std::string cell(const std::string& row, int n) {
    std::size_t begin = 0;
    for (int i = 0; i <= n; ++i) {
        begin = row.find('|', begin);
        if (begin == std::string::npos) return {};
        ++begin;
    }
    const std::string text = row.substr(begin, row.find('|', begin) - begin);
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

// What the documentation says of a value, for the words that leave no choice.
bool documentedKind(std::string value, FieldKind* kind) {
    value = value.substr(0, value.find(" (v)"));
    *kind = FieldKind::Text;
    if (value == "true or false") *kind = FieldKind::Flag;
    for (const char* number : {"number", "bytes", "MHz", "Mbps", "seconds", "milliseconds"}) {
        if (value == number) *kind = FieldKind::Number;
    }
    return *kind != FieldKind::Text || value == "text" || value == "path" || value == "list";
}

}  // namespace

TEST(FieldKind, MakesNothingOfAFieldThatItsDocumentationDoesNot) {
    std::ifstream documentation(ZUK_SOURCE_DIR "/docs/fields.md");
    int rows = 0;
    for (std::string row; std::getline(documentation, row);) {
        const std::string name = cell(row, 0);
        FieldKind documented;
        if (name.empty() || !documentedKind(cell(row, 1), &documented)) continue;
        ++rows;
        const FieldKind kind = fieldKind(std::wstring(name.begin(), name.end()));
        // Text is always safe, and right for a name that carries a number in one group and words in another.
        EXPECT_TRUE(kind == documented || kind == FieldKind::Text)
            << name << ": its row in docs/fields.md and the tables of cli/field_kind.cpp differ";
    }
    EXPECT_GT(rows, 100);
}
