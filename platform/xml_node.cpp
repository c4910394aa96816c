#include "platform/xml_node.h"

namespace {
StringMap noAttributes;
std::list<Node*> noChildren;
}  // namespace

Node::Node() noexcept : Node(&noChildren) {}
Node::Node(std::list<Node*>* children) noexcept : attributes(&noAttributes), children_(children) {}

const char* Node::getTypeName() const {
    switch (getType()) {
        case kElement:
            return "element";
        case kText:
            return "text";
        case kComment:
            return "comment";
        default:
            return "instruction";
    }
}
