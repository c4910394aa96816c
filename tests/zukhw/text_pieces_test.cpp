#include "scanners/zukhw/text_pieces.h"

#include <gtest/gtest.h>

namespace {

constexpr std::size_t kMany = 5000;  // lines: more than one piece holds

std::string manyLines() {
    std::string text;
    for (std::size_t i = 0; i < kMany; ++i) text += "line " + std::to_string(i) + " of a long file\n";
    return text;
}

TEST(TextPieces, GiveTheWholeTextInOrder) {
    const std::string text = manyLines() + "the last one has no end";
    const MemoryAccess file(text);
    std::string together;
    std::size_t count = 0;
    for (TextPieces pieces(file, "\n"); pieces.next(); ++count) {
        EXPECT_EQ(together.size(), pieces.offset());
        together += pieces.text();
    }
    EXPECT_EQ(text, together);
    EXPECT_GT(count, 1U);
}

TEST(TextPieces, EndWithTheSeparator) {
    const std::string text = manyLines();
    const MemoryAccess file(text);
    for (TextPieces pieces(file, "long file\n"); pieces.next();) {
        EXPECT_EQ("long file\n", pieces.text().substr(pieces.text().size() - 10));
    }
}

TEST(TextPieces, GrowUntilASeparatorFits) {
    const std::string text = std::string(200000, 'x') + "\n\n" + std::string(70000, 'y');
    const MemoryAccess file(text);
    TextPieces pieces(file, "\n\n");
    ASSERT_TRUE(pieces.next());
    EXPECT_EQ(200002U, pieces.text().size());
    ASSERT_TRUE(pieces.next());
    EXPECT_EQ(70000U, pieces.text().size());
    EXPECT_FALSE(pieces.next());
}

TEST(TextPieces, AreNoneOfAnEmptyFile) {
    const MemoryAccess file("");
    EXPECT_FALSE(TextPieces(file, "\n").next());
}

}  // namespace
