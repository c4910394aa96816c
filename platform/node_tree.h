#pragma once

#include <deque>

#include "platform/arena.h"
#include "platform/xml_node.h"

// The nodes of a parsed tree. All but the document element lie in the tree's arena and are never deleted
// by themselves.

class ElementNode : public Node {
  public:
    void setName(const wchar_t* tag) { name = String::view(tag); }
    void setChildren(std::list<Node*>* children) { children_ = children; }
};

template <int kType>
class LeafNode final : public Node {
  public:
    explicit LeafNode(const wchar_t* text) noexcept : Node(nullptr) { name = String::view(text); }
    int getType() const override { return kType; }
};

// The document element, and with it everything the tree is made of.
class DocumentNode final : public ElementNode {
  public:
    // The lists of all elements that have children: the only parts of a tree that need destroying. A deque
    // keeps them in place and clears them block by block.
    std::deque<std::list<Node*>> lists;
    Arena arena;
};
