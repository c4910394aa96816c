#include "scanners/zukhw/hwdb.h"

#include <endian.h>
#include <fnmatch.h>

#include <array>
#include <cstring>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kSignature[] = {'K', 'S', 'L', 'P', 'H', 'H', 'R', 'H'};
constexpr std::size_t kMaxText = 4096;
constexpr int kMaxNodes = 20000;  // of one search: a broken tree may run in circles

// The parts of the file, little-endian. Later versions make them longer at their ends.
struct Header {
    char signature[8];
    std::uint64_t toolVersion, fileSize, headerSize, nodeSize, childSize, valueSize, rootOffset;
};
struct NodeHead {
    std::uint64_t prefixOffset;
    std::uint8_t childCount;
    std::uint8_t padding[7];
    std::uint64_t valueCount;
};
struct Child {
    std::uint8_t character;
    std::uint8_t padding[7];
    std::uint64_t offset;
};
struct Value {
    std::uint64_t keyOffset, valueOffset;
};

FileDescriptor openDatabase(Machine& machine) {
    for (const char* path : {"etc/udev/hwdb.bin", "usr/lib/udev/hwdb.bin", "lib/udev/hwdb.bin"}) {
        FileDescriptor fd = machine.files().openRegular(path);
        if (fd.valid()) return fd;
    }
    return FileDescriptor();
}

bool isWildcard(char c) {
    return c == '*' || c == '?' || c == '[';
}

}  // namespace

struct Hwdb::Search {
    std::string name;
    Properties found;
    int nodes = 0;
};

Hwdb::Hwdb(Machine& machine) : file_(openDatabase(machine)) {
    Header header;
    if (!file_.isOpen() || !file_.read(0, &header, sizeof header)) return;
    if (std::memcmp(header.signature, kSignature, sizeof kSignature) != 0) return;
    nodeSize_ = le64toh(header.nodeSize);
    childSize_ = le64toh(header.childSize);
    valueSize_ = le64toh(header.valueSize);
    constexpr std::uint64_t kLargest = 1024;
    const bool sane = nodeSize_ >= sizeof(NodeHead) && nodeSize_ <= kLargest && childSize_ >= sizeof(Child) &&
                      childSize_ <= kLargest && valueSize_ >= sizeof(Value) && valueSize_ <= kLargest;
    if (sane) rootOffset_ = le64toh(header.rootOffset);
}

bool Hwdb::readNode(std::uint64_t offset, Node* node) {
    constexpr std::uint64_t kMaxValues = 1024;
    NodeHead head;
    if (!file_.read(offset, &head, sizeof head)) return false;
    const std::uint64_t prefix = le64toh(head.prefixOffset);
    const std::uint64_t values = le64toh(head.valueCount);
    if (values > kMaxValues) return false;
    if (prefix != 0) node->prefix = file_.text(prefix, kMaxText);
    std::uint64_t at = offset + nodeSize_;
    for (unsigned i = 0; i < head.childCount; ++i, at += childSize_) {
        Child child;
        if (!file_.read(at, &child, sizeof child)) return false;
        node->children[static_cast<char>(child.character)] = le64toh(child.offset);
    }
    for (std::uint64_t i = 0; i < values; ++i, at += valueSize_) node->values.push_back(at);
    return true;
}

void Hwdb::addValues(const Node& node, Search* search) {
    for (const std::uint64_t offset : node.values) {
        Value value;
        if (!file_.read(offset, &value, sizeof value)) continue;
        const std::string key = file_.text(le64toh(value.keyOffset), kMaxText);
        // Keys begin with a blank; others are for the tools that made the file.
        if (startsWith(key, " "))
            search->found[key.substr(1)] = file_.text(le64toh(value.valueOffset), kMaxText);
    }
}

Hwdb::Properties Hwdb::lookup(const std::string& name) {
    Search search;
    search.name = name;
    if (available()) walk(&search);
    return search.found;
}

// Follows the name's own characters; wherever a pattern branches off, its subtree is tried by matching.
void Hwdb::walk(Search* search) {
    const std::string& name = search->name;
    std::uint64_t offset = rootOffset_;
    std::size_t at = 0;
    while (++search->nodes < kMaxNodes) {
        Node node;
        if (!readNode(offset, &node)) return;
        for (std::size_t i = 0; i < node.prefix.size(); ++i) {
            if (isWildcard(node.prefix[i])) return matchPatterns(offset, i, name.substr(0, at + i), search);
            if (at + i >= name.size() || node.prefix[i] != name[at + i]) return;
        }
        at += node.prefix.size();
        for (const char wildcard : {'*', '?', '['}) {
            const auto child = node.children.find(wildcard);
            if (child == node.children.end()) continue;
            matchPatterns(child->second, 0, name.substr(0, at) + wildcard, search);
        }
        if (at == name.size()) return addValues(node, search);
        const auto child = node.children.find(name[at]);
        if (child == node.children.end()) return;
        offset = child->second;
        ++at;
    }
}

// Tries all patterns of the node and below it that begin with `pattern`, which the node's prefix continues
// from its character `skip` on.
void Hwdb::matchPatterns(std::uint64_t offset, std::size_t skip, const std::string& pattern, Search* search) {
    Node node;
    if (++search->nodes >= kMaxNodes || pattern.size() > kMaxText || !readNode(offset, &node)) return;
    const std::string whole = pattern + node.prefix.substr(std::min(skip, node.prefix.size()));
    for (const auto& [character, child] : node.children) matchPatterns(child, 0, whole + character, search);
    if (node.values.empty()) return;
    if (::fnmatch(whole.c_str(), search->name.c_str(), 0) == 0) addValues(node, search);
}
