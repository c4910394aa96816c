#include "platform/wide_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {
TEST(WideText, IsEmptyWithoutCharacters) {
    Arena arena;
    WideText text(arena);
    EXPECT_STREQ(L"", text.finish());
    text.add("");
    EXPECT_STREQ(L"", text.finish());
}

TEST(WideText, JoinsWhatIsAdded) {
    Arena arena;
    WideText text(arena);
    text.add("a\xC3\xA9");
    text.add("bc");
    EXPECT_STREQ(L"a\u00E9bc", text.finish());
}

TEST(WideText, KeepsFinishedTexts) {
    Arena arena;
    WideText text(arena);
    text.add("first");
    const wchar_t* first = text.finish();
    text.add("second");
    const wchar_t* second = text.finish();
    EXPECT_STREQ(L"first", first);
    EXPECT_STREQ(L"second", second);
}

// Lengths around those at which a text moves to another block, with little ones between.
TEST(WideText, KeepsTextsOfEveryLength) {
    Arena arena;
    WideText text(arena);
    std::vector<std::pair<const wchar_t*, std::wstring>> texts;
    for (std::size_t length = 0; length < 40000; length = length * 5 / 4 + 1) {
        const std::string characters(length, static_cast<char>('a' + length % 26));
        text.add(characters);
        texts.emplace_back(text.finish(), std::wstring(characters.begin(), characters.end()));
    }
    for (const auto& [found, expected] : texts) EXPECT_EQ(expected, found);
}

TEST(WideText, GrowsPieceByPiece) {
    Arena arena;
    WideText text(arena);
    std::wstring expected;
    for (int i = 0; i < 100000; ++i) {
        text.add("piece");
        expected += L"piece";
    }
    EXPECT_EQ(expected, text.finish());
}
}  // namespace
