#include "platform/wide_string.h"

#include <gtest/gtest.h>

#include <string>

namespace {
TEST(String, IsEmptyByDefault) {
    EXPECT_STREQ(L"", String().text);
}

TEST(String, CountsNullAsEmpty) {
    EXPECT_STREQ(L"", String(nullptr).text);
}

TEST(String, CopiesItsCharacters) {
    wchar_t characters[] = L"before";
    const String string(characters);
    characters[0] = L'x';
    EXPECT_STREQ(L"before", string.text);
}

TEST(String, CopyOutlivesTheOriginal) {
    String copy;
    {
        const String original(L"original");
        copy = original;
    }
    EXPECT_STREQ(L"original", copy.text);
}

TEST(String, CopyOfAViewOwnsItsCharacters) {
    wchar_t characters[] = L"before";
    const String view = String::view(characters);
    const String copy(view);
    characters[0] = L'x';
    EXPECT_STREQ(L"before", copy.text);
}

TEST(String, ViewBorrows) {
    const wchar_t characters[] = L"there";
    EXPECT_EQ(characters, String::view(characters).text);
}

TEST(String, MoveTakesTheCharactersAndLeavesAnEmptyString) {
    String from(L"moved");
    const wchar_t* characters = from.text;
    const String to(std::move(from));
    EXPECT_EQ(characters, to.text);
    EXPECT_STREQ(L"", from.text);  // NOLINT(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
}

TEST(String, SurvivesAssignmentToItself) {
    String string(L"same");
    const String& alias = string;
    string = alias;
    EXPECT_STREQ(L"same", string.text);
}

TEST(String, ComparesByCharacters) {
    const String string(L"beta");
    EXPECT_EQ(0, string.compareTo(L"beta"));
    EXPECT_LT(0, string.compareTo(L"alpha"));
    EXPECT_GT(0, string.compareTo(L"gamma"));
    EXPECT_NE(0, string.compareTo(L"Beta"));
    EXPECT_NE(0, string.compareTo(L"bet"));
    EXPECT_NE(0, string.compareTo(nullptr));
    EXPECT_EQ(0, String().compareTo(nullptr));
}

TEST(String, ComparesStringsInEveryMode) {
    for (const int mode : {-1, 0, 1, 2}) {
        EXPECT_EQ(0, String(L"guid").compareTo(String(L"guid"), mode)) << mode;
        EXPECT_NE(0, String(L"guid").compareTo(String(L"GUID"), mode)) << mode;
    }
}
}  // namespace
