#include "scanners/zuksw/language/metadata_reader.h"

#include <algorithm>
#include <utility>

#include "scanners/zuksw/output/xml_escape.h"

namespace zuksw {
namespace {

class Reader {
  public:
    explicit Reader(Scope* scope) : scope_(scope) {}

    // The element without its end.
    void open(const Element& element) {
        beginTag(element);
        xml_ += '>';
        readChildren(element);
    }

    std::vector<MetadataPiece> take() {
        flush();
        return std::move(pieces_);
    }

  private:
    void readChildren(const Element& element) {
        for (const Element* child : element.children) {
            if (child->name.empty()) {
                addTemplate(child->text, MetadataPiece::Type::kText, child->offset);
            } else {
                readElement(*child);
            }
        }
    }

    // What is written is ASCII, and a name cannot be spelt otherwise.
    void checkName(std::string_view name, std::size_t offset) {
        const bool ascii = std::all_of(name.begin(), name.end(), [](char c) { return (c & 0x80) == 0; });
        if (!ascii)
            scope_->report(offset, "a name inside <Metadata> has letters beyond ASCII; use plain ones");
    }

    void beginTag(const Element& element) {
        checkName(element.name, element.offset);
        xml_ += '<';
        appendXmlText(element.name, &xml_);
        for (const Attribute& attribute : element.attributes) {
            checkName(attribute.name, element.offset);
            xml_ += ' ';
            appendXmlText(attribute.name, &xml_);
            xml_ += "=\"";
            addTemplate(attribute.value, MetadataPiece::Type::kAttribute, element.offset);
            xml_ += '"';
        }
    }

    void readElement(const Element& element) {
        if (element.children.empty()) {
            beginTag(element);
            xml_ += "/>";
            return;
        }
        open(element);
        xml_ += "</";
        appendXmlText(element.name, &xml_);
        xml_ += '>';
    }

    void addTemplate(std::string_view text, MetadataPiece::Type type, std::size_t offset) {
        Template parsed = Template::parse(text, scope_, offset);
        if (parsed.isLiteral()) {
            const auto append = type == MetadataPiece::Type::kText ? appendXmlText : appendXmlAttribute;
            append(parsed.literal(), &xml_);
            return;
        }
        flush();
        pieces_.push_back({type, {}, std::move(parsed)});
    }

    void flush() {
        if (xml_.empty()) return;
        pieces_.push_back({MetadataPiece::Type::kXml, std::exchange(xml_, {}), {}});
    }

    Scope* scope_;
    std::string xml_;
    std::vector<MetadataPiece> pieces_;
};

}  // namespace

std::vector<MetadataPiece> readMetadata(const Element& metadata, Scope* scope) {
    if (metadata.attributes.empty() && metadata.children.empty()) return {};
    Reader reader(scope);
    reader.open(metadata);
    return reader.take();
}

}  // namespace zuksw
