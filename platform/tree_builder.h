#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/name_cache.h"
#include "platform/node_tree.h"
#include "platform/wide_text.h"

// Builds a tree from the events of a parse, which must be well nested. Names and texts are UTF-8. Failed
// allocations throw std::bad_alloc; the builder is of no further use then.
class TreeBuilder {
  public:
    explicit TreeBuilder(bool keepLayout);

    // `attributes` holds keys and values by turns and ends with a null pointer.
    void startElement(const char* name, const char* const* attributes);
    void endElement();
    void addText(std::string_view text);
    void addComment(const char* text);
    void addInstruction(const char* target, const char* data);

    std::size_t depth() const { return open_.size(); }
    // The tree of the events so far; the builder is empty then.
    std::unique_ptr<Node> takeTree() { return std::move(document_); }

  private:
    // White space of which it is not known yet whether it is layout.
    struct Blank {
        std::size_t position;  // how many children stand before it
        std::size_t begin;     // in blanks_
    };
    // An element that was started and not ended.
    struct Level {
        ElementNode* element;
        std::size_t firstBlank;  // in pending_
        std::size_t blankBegin;  // in blanks_
        bool keepsBlanks;
        bool hasElements;
    };

    Level& top() { return open_.back(); }
    StringMap* makeAttributes(const char* const* attributes);
    template <int kType>
    Node* makeLeaf(const wchar_t* text);
    void endText();
    void endBlank(Level& level);
    void keepBlanks(Level& level);  // what was white space between children so far is text after all
    void forgetBlanks(const Level& level);
    const wchar_t* widenBlanks(std::size_t begin, std::size_t end);

    bool keepLayout_;
    std::unique_ptr<DocumentNode> document_;
    WideText text_;
    NameCache names_;
    std::vector<Level> open_;

    // A text begins as white space in blanks_, from runBegin_ on, and moves to text_ with its first other
    // character: then it is solid.
    std::string blanks_;
    std::size_t runBegin_ = 0;
    bool solid_ = false;
    std::vector<Blank> pending_;
};
