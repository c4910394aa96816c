#include "platform/node_tree.h"

ElementBlocks::~ElementBlocks() {
    for (ElementNode* block : blocks_) {
        const std::size_t length = block == blocks_.back() ? used_ : kBlockLength;
        for (std::size_t i = 0; i < length; ++i) block[i].children.clear();
    }
}

ElementNode* ElementBlocks::make() {
    if (used_ == kBlockLength) {
        blocks_.push_back(static_cast<ElementNode*>(arena_.allocate(kBlockLength * sizeof(ElementNode))));
        used_ = 0;
    }
    ElementNode* element = new (blocks_.back() + used_) ElementNode();
    ++used_;
    return element;
}
