#include "cli/column_choice.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

#include "cli/text.h"

namespace {

Column column(const wchar_t* title, const wchar_t* cell, bool alignRight = false) {
    return {title, {cell}, alignRight};
}

std::vector<std::wstring> titlesOf(const std::vector<Column>& columns) {
    std::vector<std::wstring> titles;
    titles.reserve(columns.size());
    for (const Column& shown : columns) titles.push_back(shown.title);
    return titles;
}

using Titles = std::vector<std::wstring>;
const Page kNarrow = {30, true};

TEST(ColumnChoice, TakesWhatIsPreferredFirst) {
    const ColumnChoice choice = chooseColumns(
        L"Storage", {column(L"ReadOnly", L"false"), column(L"Model", L"Fast"), column(L"DeviceName", L"sda")},
        kNarrow);
    EXPECT_EQ((Titles{L"DeviceName", L"Model", L"ReadOnly"}), titlesOf(choice.shown));
    EXPECT_TRUE(choice.left.empty());
}

TEST(ColumnChoice, KeepsTheOrderWherePreferencesSayNothing) {
    const ColumnChoice choice = chooseColumns(L"Unheard", {column(L"B", L"1"), column(L"A", L"2")}, kNarrow);
    EXPECT_EQ((Titles{L"B", L"A"}), titlesOf(choice.shown));
}

TEST(ColumnChoice, LeavesOutWhatHasNoRoomAndGoesOnWithWhatHas) {
    const ColumnChoice choice = chooseColumns(
        L"Unheard",
        {column(L"Key", L"k"), column(L"Long", L"0123456789012345678901234567"), column(L"End", L"e")},
        kNarrow);
    EXPECT_EQ((Titles{L"Key", L"End"}), titlesOf(choice.shown));
    EXPECT_EQ(Titles{L"Long"}, choice.left);
}

TEST(ColumnChoice, CutsNoNumber) {
    const ColumnChoice choice = chooseColumns(
        L"Storage", {column(L"DeviceName", L"sda"), column(L"SizeBytes", L"18446744073709551615", true)},
        kNarrow);
    EXPECT_EQ(Titles{L"DeviceName"}, titlesOf(choice.shown));
}

TEST(ColumnChoice, ShowsOneColumnOnAnyPage) {
    EXPECT_EQ(1U,
              chooseColumns(L"Unheard", {column(L"VeryLongTitleOfAColumn", L"x")}, {10, true}).shown.size());
}

TEST(ColumnChoice, PrefersFieldsThatThereAre) {
    std::ifstream documentation(ZUK_SOURCE_DIR "/docs/fields.md");
    std::map<std::string, std::set<std::string>> fields;
    std::string group;
    for (std::string row; std::getline(documentation, row);) {
        if (row.rfind("## ", 0) == 0) group = row.substr(3);
        if (row.rfind("| ", 0) == 0) fields[group].insert(row.substr(2, row.find(' ', 2) - 2));
    }
    int preferred = 0;
    for (const auto& [name, documented] : fields) {
        for (const std::wstring_view field : preferredColumns(std::wstring(name.begin(), name.end()))) {
            ++preferred;
            EXPECT_EQ(1U, documented.count(toUtf8(field))) << name << '.' << toUtf8(field);
        }
    }
    EXPECT_GT(preferred, 100);
}

}  // namespace
