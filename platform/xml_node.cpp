#include "platform/xml_node.h"

namespace {
StringMap noAttributes;
const std::list<Node*> noChildren;
}  // namespace

Node::Node() : attributes(&noAttributes) {}

const std::list<Node*>* Node::childList() const {
    return &noChildren;
}

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
