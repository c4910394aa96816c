#include "tests/zukhw/hwdb_file.h"

#include <cstdint>

namespace {

using Patterns = std::map<std::string, std::pair<std::string, std::string>>;

constexpr std::uint64_t kHeader = 80, kNode = 24, kChild = 16, kValue = 16;

class Builder {
  public:
    Builder() : bytes_(kHeader, '\0') {}

    std::string build(const Patterns& patterns) {
        const std::uint64_t root = addNode(patterns, "");
        bytes_.replace(0, 8, "KSLPHHRH");
        const std::uint64_t numbers[] = {252, bytes_.size(), kHeader, kNode, kChild, kValue, root};
        for (std::size_t i = 0; i < 7; ++i) put(8 + i * 8, numbers[i]);
        return bytes_;
    }

  private:
    void put(std::uint64_t at, std::uint64_t value) {
        for (std::size_t i = 0; i < 8; ++i) bytes_[at + i] = static_cast<char>(value >> (8 * i) & 0xFFU);
    }

    std::uint64_t addText(const std::string& text) {
        const std::uint64_t at = bytes_.size();
        bytes_ += text + '\0';
        return at;
    }

    // The node of all patterns that begin with `head`, after the nodes below it.
    std::uint64_t addNode(const Patterns& patterns, const std::string& head) {
        std::map<char, std::uint64_t> children;
        for (const auto& [pattern, property] : patterns) {
            if (pattern.size() <= head.size() || pattern.compare(0, head.size(), head) != 0) continue;
            const char next = pattern[head.size()];
            if (children.count(next) == 0) children[next] = addNode(patterns, head + next);
        }
        const auto own = patterns.find(head);
        const bool hasValue = own != patterns.end();
        const std::uint64_t key = hasValue ? addText(' ' + own->second.first) : 0;
        const std::uint64_t value = hasValue ? addText(own->second.second) : 0;
        std::uint64_t at = bytes_.size();
        bytes_.resize(at + kNode + children.size() * kChild + (hasValue ? kValue : 0));
        const std::uint64_t node = at;
        bytes_[at + 8] = static_cast<char>(children.size());
        put(at + 16, hasValue ? 1 : 0);
        at += kNode;
        for (const auto& [character, offset] : children) {
            bytes_[at] = character;
            put(at + 8, offset);
            at += kChild;
        }
        if (hasValue) {
            put(at, key);
            put(at + 8, value);
        }
        return node;
    }

    std::string bytes_;
};

}  // namespace

std::string makeHwdb(const Patterns& patterns) {
    return Builder().build(patterns);
}
