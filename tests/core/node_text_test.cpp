#include "sw/node_text.h"

#include <gtest/gtest.h>

#include <ostream>

#include "platform/xml_node.h"

namespace {
// Writes its name byte by byte and in one piece, then the mode it was given.
class SpeakingNode : public Node {
  public:
    explicit SpeakingNode(const char* text) : text_(text) {}
    void write(std::ostream& out, int mode) const override {
        out.put(text_[0]);
        out << text_ + 1 << mode;
    }

  private:
    const char* text_;
};

TEST(NodeText, WidensByteByByteWithSign) {
    NodeText text;
    const std::wstring expected = {static_cast<wchar_t>(-23), L'x', static_cast<wchar_t>(-128), L'1'};
    EXPECT_EQ(expected, text.of(SpeakingNode("\xE9x\x80"), 1));
}

TEST(NodeText, GivesEachNodeForItself) {
    NodeText text;
    EXPECT_EQ(L"first1", text.of(SpeakingNode("first"), 1));
    EXPECT_EQ(L"second2", text.of(SpeakingNode("second"), 2));
}
}  // namespace
