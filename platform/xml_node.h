#pragma once

#include <iosfwd>
#include <list>

#include "platform/wide_string.h"

// The tree of a parsed XML file and the reader that builds it. A tree belongs to its root: deleting the
// root releases every node, attribute and text at once. Nodes below the root are never deleted singly.

// An element's attributes, in document order.
class StringMap {
  public:
    // One attribute; the characters belong to the tree.
    struct Entry {
        const wchar_t* key;
        const wchar_t* value;
    };

    StringMap() noexcept : count(0), entries_(nullptr) {}
    // Borrows `entries`, an array of `size`.
    StringMap(const Entry* entries, int size) noexcept : count(size), entries_(entries) {}

    // Sets both strings to views that are valid as long as the tree. Returns 0; 1 when there is no entry of
    // that index, and both keep their values.
    int getEntry(int index, String& key, String& value) const {
        if (index < 0 || index >= count) return 1;
        key = String::view(entries_[index].key);
        value = String::view(entries_[index].value);
        return 0;
    }

    int count;

  private:
    const Entry* entries_;
};

// One node of a tree. A plain Node is an element with an empty name, no attributes and no children.
class Node {
  public:
    static constexpr int kElement = 0;
    static constexpr int kText = 1;
    static constexpr int kComment = 2;
    static constexpr int kInstruction = 3;

    Node();
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    virtual int getType() const { return kElement; }
    // What getType() says, in words: "element", "text", "comment" or "instruction".
    virtual const char* getTypeName() const;
    // Writes the node and all below it as UTF-8 markup without an XML declaration, which read again gives
    // an equal tree. Every mode gives the same text. A character that is none in Unicode becomes U+FFFD.
    virtual void write(std::ostream& out, int mode) const;

    // Points `children` at the child nodes in document order and returns 0; returns 1 for a node that can
    // have none (anything but an element). The list is valid as long as the tree.
    int getChildren(const std::list<Node*>** children) const {
        const std::list<Node*>* list = childList();
        if (list == nullptr) return 1;
        *children = list;
        return 0;
    }

    // An element's tag, the characters of a text or comment, or an instruction's target, followed by a
    // blank and its data where it has any.
    String name;
    StringMap* attributes;  // never null; elements without attributes share one empty map

  protected:
    virtual const std::list<Node*>* childList() const;  // null for a node that can have no children
};

// Receives what a reader finds. What the operations return is not looked at.
class NodeSink {
  public:
    virtual int onNodeTree(Node* root) = 0;  // the sink owns the tree from here on
    virtual int onWarning(const String& /*message*/, int /*line*/) { return 0; }
    virtual int onError(const String& /*message*/, int /*line*/) { return 0; }
    virtual int onCriticalError(const String& /*message*/, int /*line*/) { return 0; }
    virtual ~NodeSink() = default;
};

// Reads XML files (UTF-8, UTF-16, ISO-8859-1 or US-ASCII, as they declare) into trees. External entities
// and document types are never read.
//
// Adjacent character data is one text node, whatever mixture of plain text, entities and CDATA it came as.
// White space in an element whose content is elements and nothing else but white space is layout and left
// out; all other text is kept to the character. Comments and instructions outside the document element are
// not part of the tree.
class NodeReader {
  public:
    explicit NodeReader(NodeSink& sink) noexcept : sink_(sink) {}
    ~NodeReader() = default;
    NodeReader(const NodeReader&) = delete;
    NodeReader& operator=(const NodeReader&) = delete;

    int depthLimit = 0;             // elements nested deeper are an error; 0: any depth
    bool keepLayout = false;        // white space between elements is text as well
    bool dropComments = false;      // no nodes for comments
    bool dropInstructions = false;  // no nodes for processing instructions

    // Reads one file and hands its tree to the sink. The path's characters are narrowed to their low 8
    // bits; `mode` may be any number. Returns 0, or 1 when there was an error; the sink gets no tree then.
    // What is wrong goes to the sink first: a file that cannot be opened or read is a critical error in
    // line 0, a document that is not well formed an error, an entity that is skipped a warning. Messages
    // are ASCII.
    int process(const String& fileName, int mode);

    int errorCount = 0;  // errors and critical errors of the last process()

  private:
    NodeSink& sink_;
};
