#pragma once

#include <vector>

#include "platform/arena.h"
#include "platform/xml_node.h"

// The nodes of a parsed tree. All but the document element lie in the tree's arena and are never deleted
// by themselves.

class ElementNode : public Node {
  public:
    void setName(const wchar_t* tag) { name = String::view(tag); }

    std::list<Node*> children;

  protected:
    const std::list<Node*>* childList() const override { return &children; }
};

template <int kType>
class LeafNode final : public Node {
  public:
    explicit LeafNode(const wchar_t* text) { name = String::view(text); }
    int getType() const override { return kType; }

  protected:
    const std::list<Node*>* childList() const override { return nullptr; }
};

// Makes elements in blocks, so that their lists, which are all of a tree that needs destroying, are cleared
// block by block.
class ElementBlocks {
  public:
    explicit ElementBlocks(Arena& arena) noexcept : arena_(arena) {}
    ~ElementBlocks();
    ElementBlocks(const ElementBlocks&) = delete;
    ElementBlocks& operator=(const ElementBlocks&) = delete;

    ElementNode* make();

  private:
    static constexpr std::size_t kBlockLength = 128;

    Arena& arena_;
    std::vector<ElementNode*> blocks_;
    std::size_t used_ = kBlockLength;  // of the last block
};

// The document element, and with it everything the tree is made of.
class DocumentNode final : public ElementNode {
  public:
    Arena arena;
    ElementBlocks elements{arena};
};
