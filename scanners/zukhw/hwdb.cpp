#include "scanners/zukhw/hwdb.h"

#include <endian.h>

#include <bitset>
#include <cstring>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kSignature[] = {'K', 'S', 'L', 'P', 'H', 'H', 'R', 'H'};
constexpr std::size_t kMaxText = 4096;
constexpr std::size_t kMaxDepth = 512;
constexpr std::size_t kMaxSteps = 20000;  // of one search: a broken tree may run in circles

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

// The places in a name up to which the beginning of a pattern can match it.
constexpr std::size_t kMaxName = 255;
using Places = std::bitset<kMaxName + 1>;

}  // namespace

// Walks the tree, and leaves every branch as soon as its pattern can match the name no more.
class Hwdb::Search {
  public:
    Search(Hwdb& database, const std::string& name) : database_(database), length_(name.size()) {
        for (std::size_t i = 0; i < name.size(); ++i) placesOf_[static_cast<unsigned char>(name[i])].set(i);
    }

    Properties run() {
        visit(database_.rootOffset_, Places(1), 0);
        return std::move(found_);
    }

  private:
    // The places after one more character of the pattern.
    Places after(char c, const Places& places) const {
        if (c == '*') {
            std::size_t first = 0;
            while (first <= length_ && !places[first]) ++first;
            return Places().set() << first;
        }
        if (c == '[') return Places();
        const Places known = c == '?' ? places : places & placesOf_[static_cast<unsigned char>(c)];
        return known << 1;
    }

    void visit(std::uint64_t offset, Places places, std::size_t depth) {
        Node node;
        if (++steps_ > kMaxSteps || depth > kMaxDepth || !database_.readNode(offset, &node)) return;
        steps_ += node.prefix.size();
        for (std::size_t i = 0; i < node.prefix.size() && places.any(); ++i)
            places = after(node.prefix[i], places);
        if (places.none()) return;
        // Wildcards come before letters and digits: what is found later is more literal.
        if (places[length_]) database_.addValues(node, &found_);
        for (const auto& [character, child] : node.children) {
            const Places next = after(character, places);
            if (next.any()) visit(child, next, depth + 1);
        }
    }

    Hwdb& database_;
    std::size_t length_;
    Places placesOf_[256];
    Properties found_;
    std::size_t steps_ = 0;
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
    NodeHead head;
    if (!file_.read(offset, &head, sizeof head)) return false;
    const std::uint64_t prefix = le64toh(head.prefixOffset);
    if (prefix != 0) node->prefix = file_.text(prefix, kMaxText);
    std::uint64_t at = offset + nodeSize_;
    for (unsigned i = 0; i < head.childCount; ++i, at += childSize_) {
        Child child;
        if (!file_.read(at, &child, sizeof child)) return false;
        node->children.emplace_back(static_cast<char>(child.character), le64toh(child.offset));
    }
    node->values = at;
    node->valueCount = le64toh(head.valueCount);
    return true;
}

void Hwdb::addValues(const Node& node, Properties* found) {
    constexpr std::uint64_t kMaxValues = 1024;
    if (node.valueCount > kMaxValues) return;
    for (std::uint64_t i = 0; i < node.valueCount; ++i) {
        Value value;
        if (!file_.read(node.values + i * valueSize_, &value, sizeof value)) return;
        const std::string key = file_.text(le64toh(value.keyOffset), kMaxText);
        // Keys begin with a blank; others are for the tools that made the file.
        if (startsWith(key, " ")) (*found)[key.substr(1)] = file_.text(le64toh(value.valueOffset), kMaxText);
    }
}

Hwdb::Properties Hwdb::lookup(const std::string& name) {
    if (!available() || name.size() > kMaxName) return {};
    return Search(*this, name).run();
}
