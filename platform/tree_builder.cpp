#include "platform/tree_builder.h"

namespace {
bool isBlank(char character) {
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

std::size_t countBlanks(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && isBlank(text[count])) ++count;
    return count;
}
}  // namespace

TreeBuilder::TreeBuilder(bool keepLayout)
    : keepLayout_(keepLayout),
      document_(std::make_unique<DocumentNode>()),
      text_(document_->arena),
      names_(document_->arena, text_) {}

void TreeBuilder::startElement(const char* name, const char* const* attributes) {
    endText();
    ElementNode* element = document_.get();
    if (!open_.empty()) {
        element = document_->elements.make();
        top().hasElements = true;
        top().element->children.push_back(element);
    }
    element->setName(names_.widen(name));
    if (*attributes != nullptr) element->attributes = makeAttributes(attributes);
    open_.push_back({element, pending_.size(), blanks_.size(), keepLayout_, false});
}

void TreeBuilder::endElement() {
    endText();
    if (!top().hasElements) keepBlanks(top());
    forgetBlanks(top());
    open_.pop_back();
}

void TreeBuilder::addText(std::string_view text) {
    if (!solid_) {
        const std::size_t blanks = countBlanks(text);
        blanks_.append(text, 0, blanks);
        if (blanks == text.size()) return;
        text.remove_prefix(blanks);
        if (blanks_.size() > runBegin_) text_.add(std::string_view(blanks_).substr(runBegin_));
        blanks_.resize(runBegin_);
        solid_ = true;
    }
    text_.add(text);
}

void TreeBuilder::addComment(const char* text) {
    if (open_.empty()) return;
    endText();
    text_.add(text);
    top().element->children.push_back(makeLeaf<Node::kComment>(text_.finish()));
}

void TreeBuilder::addInstruction(const char* target, const char* data) {
    if (open_.empty()) return;
    endText();
    text_.add(target);
    if (*data != '\0') text_.add(" ");
    text_.add(data);
    top().element->children.push_back(makeLeaf<Node::kInstruction>(text_.finish()));
}

StringMap* TreeBuilder::makeAttributes(const char* const* attributes) {
    std::size_t count = 0;
    while (attributes[2 * count] != nullptr) ++count;
    Arena& arena = document_->arena;
    auto* entries = static_cast<StringMap::Entry*>(arena.allocate(count * sizeof(StringMap::Entry)));
    for (std::size_t i = 0; i < count; ++i) {
        const wchar_t* key = names_.widen(attributes[2 * i]);
        text_.add(attributes[2 * i + 1]);
        new (&entries[i]) StringMap::Entry{key, text_.finish()};
    }
    return arena.make<StringMap>(entries, static_cast<int>(count));
}

template <int kType>
Node* TreeBuilder::makeLeaf(const wchar_t* text) {
    return document_->arena.make<LeafNode<kType>>(text);
}

void TreeBuilder::endText() {
    if (solid_) {
        solid_ = false;
        const wchar_t* text = text_.finish();
        if (!top().keepsBlanks) keepBlanks(top());
        top().element->children.push_back(makeLeaf<Node::kText>(text));
    } else if (blanks_.size() > runBegin_) {
        endBlank(top());
    }
}

void TreeBuilder::endBlank(Level& level) {
    if (level.keepsBlanks) {
        level.element->children.push_back(makeLeaf<Node::kText>(widenBlanks(runBegin_, blanks_.size())));
        blanks_.resize(runBegin_);
    } else {
        pending_.push_back({level.element->children.size(), runBegin_});
        runBegin_ = blanks_.size();
    }
}

void TreeBuilder::keepBlanks(Level& level) {
    level.keepsBlanks = true;
    if (pending_.size() == level.firstBlank) return;
    std::list<Node*>& list = level.element->children;
    auto place = list.begin();
    std::size_t position = 0;
    for (std::size_t i = level.firstBlank; i < pending_.size(); ++i) {
        for (; position < pending_[i].position; ++position) ++place;
        const std::size_t end = i + 1 < pending_.size() ? pending_[i + 1].begin : runBegin_;
        list.insert(place, makeLeaf<Node::kText>(widenBlanks(pending_[i].begin, end)));
    }
    forgetBlanks(level);
}

void TreeBuilder::forgetBlanks(const Level& level) {
    pending_.resize(level.firstBlank);
    blanks_.resize(level.blankBegin);
    runBegin_ = blanks_.size();
}

const wchar_t* TreeBuilder::widenBlanks(std::size_t begin, std::size_t end) {
    text_.add(std::string_view(blanks_).substr(begin, end - begin));
    return text_.finish();
}
