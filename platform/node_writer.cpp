#include <ostream>
#include <string_view>
#include <vector>

#include "platform/utf8.h"
#include "platform/xml_node.h"

namespace {
// Collects markup and hands it to the stream in large pieces.
class Markup {
  public:
    explicit Markup(std::ostream& out) : out_(out) {}

    void put(char character) {
        if (used_ == sizeof(buffer_)) flush();
        buffer_[used_++] = character;
    }
    void put(std::string_view text) {
        for (const char character : text) put(character);
    }
    // Text as it is, save that what no XML document can hold becomes U+FFFD.
    void put(const wchar_t* text) {
        for (; *text != L'\0'; ++text) putCharacter(*text);
    }
    // Text with references for what would be read as markup or normalised away.
    void putEscaped(const wchar_t* text, bool inAttribute) {
        for (; *text != L'\0'; ++text) {
            if (isPlain(*text)) {
                put(static_cast<char>(*text));
                continue;
            }
            const std::string_view reference = referenceFor(*text, inAttribute);
            if (reference.empty()) {
                putCharacter(*text);
            } else {
                put(reference);
            }
        }
    }
    void flush() {
        out_.write(buffer_, static_cast<std::streamsize>(used_));
        used_ = 0;
    }

  private:
    static constexpr std::size_t kLongestCharacter = 4;

    // Most characters: ASCII without a meaning in markup.
    static bool isPlain(wchar_t character) {
        return (L'?' <= character && character <= L'~') || (L'\'' <= character && character <= L';') ||
               character == L' ';
    }
    static std::string_view referenceFor(wchar_t character, bool inAttribute) {
        switch (character) {
            case L'&':
                return "&amp;";
            case L'<':
                return "&lt;";
            case L'>':
                return "&gt;";
            case L'\r':
                return "&#13;";
            case L'"':
                return inAttribute ? "&quot;" : "";
            case L'\n':
                return inAttribute ? "&#10;" : "";
            case L'\t':
                return inAttribute ? "&#9;" : "";
            default:
                return "";
        }
    }
    static bool isAllowed(wchar_t character) {
        if (character < L' ') return character == L'\t' || character == L'\n' || character == L'\r';
        return character != 0xFFFE && character != 0xFFFF;
    }
    void putCharacter(wchar_t character) {
        if (sizeof(buffer_) - used_ < kLongestCharacter) flush();
        const wchar_t safe = isAllowed(character) ? character : wchar_t{kReplacementCharacter};
        used_ = static_cast<std::size_t>(encodeUtf8(safe, buffer_ + used_) - buffer_);
    }

    std::ostream& out_;
    std::size_t used_ = 0;
    char buffer_[4096];
};

// An element whose end tag is still to be written.
struct OpenElement {
    const Node* node;
    std::list<Node*>::const_iterator next;
    std::list<Node*>::const_iterator end;
};

void putAttributes(Markup& out, const StringMap& attributes) {
    String key;
    String value;
    for (int i = 0; attributes.getEntry(i, key, value) == 0; ++i) {
        out.put(' ');
        out.put(key.text);
        out.put("=\"");
        out.putEscaped(value.text, true);
        out.put('"');
    }
}

// Writes an element's start tag, or the whole of it when there is nothing in it.
void putElement(Markup& out, const Node& node, std::vector<OpenElement>& open) {
    out.put('<');
    out.put(node.name.text);
    if (node.attributes != nullptr) putAttributes(out, *node.attributes);
    const std::list<Node*>* children = nullptr;
    if (node.getChildren(&children) != 0 || children->empty()) {
        out.put("/>");
        return;
    }
    out.put('>');
    open.push_back({&node, children->begin(), children->end()});
}

void putNode(Markup& out, const Node& node, std::vector<OpenElement>& open) {
    switch (node.getType()) {
        case Node::kElement:
            return putElement(out, node, open);
        case Node::kText:
            return out.putEscaped(node.name.text, false);
        case Node::kComment:
            out.put("<!--");
            out.put(node.name.text);
            return out.put("-->");
        default:
            out.put("<?");
            out.put(node.name.text);
            return out.put("?>");
    }
}
}  // namespace

// A stack of its own instead of recursion: documents may be nested as deep as they like.
void Node::write(std::ostream& out, int /*mode*/) const {
    Markup markup(out);
    std::vector<OpenElement> open;
    putNode(markup, *this, open);
    while (!open.empty()) {
        OpenElement& element = open.back();
        if (element.next != element.end) {
            putNode(markup, **element.next++, open);
            continue;
        }
        markup.put("</");
        markup.put(element.node->name.text);
        markup.put('>');
        open.pop_back();
    }
    markup.flush();
}
