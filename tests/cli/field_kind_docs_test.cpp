#include <gtest/gtest.h>

#include <fstream>
#include <set>
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

// The kind of values that the words of the documentation tell.
FieldKind documentedKind(const std::string& words) {
    static const std::set<std::string> kNumbers = {"number",
                                                   "bytes",
                                                   "MHz",
                                                   "Mbps",
                                                   "seconds",
                                                   "milliseconds",
                                                   "MT/s",
                                                   "mV",
                                                   "mm",
                                                   "bits",
                                                   "lanes",
                                                   "year",
                                                   "mA",
                                                   "mWh",
                                                   "kHz",
                                                   "Hz",
                                                   "mHz",
                                                   "bit/s",
                                                   "address in bytes",
                                                   "revolutions a minute",
                                                   "hundredths of a processor",
                                                   "number with a fraction",
                                                   "minutes east of Greenwich"};
    const std::string word = words.substr(0, words.find_first_of(",:("));
    const std::string value = word.substr(0, word.find_last_not_of(' ') + 1);
    if (kNumbers.count(value) != 0) return FieldKind::Number;
    if (value == "true or false") return FieldKind::Flag;
    if (value == "list of numbers") return FieldKind::NumberList;
    if (value == "list") return FieldKind::List;
    if (value == "list of name=value") return FieldKind::PairList;
    if (value == "words") return FieldKind::Words;
    return FieldKind::Text;
}

std::wstring widened(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

}  // namespace

TEST(FieldKind, IsWhatTheDocumentationSaysOfEveryField) {
    std::ifstream documentation(ZUK_SOURCE_DIR "/docs/fields.md");
    std::string group;
    int rows = 0;
    for (std::string row; std::getline(documentation, row);) {
        if (row.rfind("## ", 0) == 0) group = row.substr(3);
        const std::string name = cell(row, 0);
        if (group.empty() || name.empty() || name == "Field" || name.front() == '-') continue;
        ++rows;
        EXPECT_EQ(documentedKind(cell(row, 1)), fieldKind(widened(group), widened(name)))
            << group << '.' << name
            << ": its row in docs/fields.md and the tables of cli/field_kind.cpp differ";
    }
    EXPECT_GT(rows, 600);
}
