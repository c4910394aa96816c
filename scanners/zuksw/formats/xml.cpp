#include <expat.h>

#include <memory>
#include <type_traits>

#include "scanners/zuksw/formats/extractors.h"
#include "scanners/zuksw/formats/xml_path.h"
#include "scanners/zuksw/versions/characters.h"

namespace zuksw {

namespace {

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

std::string_view localName(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

XmlPath::Attributes attributesOf(const XML_Char** list) {
    XmlPath::Attributes attributes;
    for (; *list != nullptr; list += 2) {
        const std::string_view name = list[0];
        const bool declaration = name == "xmlns" || name.substr(0, 6) == "xmlns:";
        if (!declaration) attributes.emplace_back(localName(name), list[1]);
    }
    return attributes;
}

// Keeps the text of the elements wanted. Text counts for the innermost element only, so that time and memory
// stay linear however the elements are nested.
class Extraction {
  public:
    Extraction(std::string_view path, XML_Parser parser) : path_(path), parser_(parser) {
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, onStart, onEnd);
        XML_SetCharacterDataHandler(parser, onText);
        XML_SetStartDoctypeDeclHandler(parser, onDoctype);
    }

    std::vector<std::string> takeFound() { return std::move(found_); }

  private:
    static constexpr std::size_t kNotWanted = SIZE_MAX;

    struct Level {
        XmlPath::Progress progress = 0;
        std::size_t value = kNotWanted;  // place of its text in found_
    };

    void start(std::string_view name, const XmlPath::Attributes& attributes) {
        if (open_.size() == kMaxValueDepth) {
            stop();
            return;
        }
        bool wanted = false;
        Level level;
        level.progress = path_.enter(open_.empty() ? XmlPath::begin() : open_.back().progress,
                                     localName(name), attributes, &wanted);
        if (wanted && path_.attribute().empty()) {
            level.value = found_.size();
            found_.emplace_back();
        } else if (wanted) {
            takeAttribute(attributes);
        }
        open_.push_back(level);
    }
    void takeAttribute(const XmlPath::Attributes& attributes) {
        for (const auto& [name, value] : attributes) {
            if (name == path_.attribute()) found_.emplace_back(value);
        }
    }
    void stop() {
        stopped_ = true;
        XML_StopParser(parser_, XML_FALSE);
    }
    void end() {
        if (stopped_) return;  // of an empty element that was too deep
        if (open_.back().value != kNotWanted) {
            std::string& text = found_[open_.back().value];
            text = std::string(trimSpace(text));
        }
        open_.pop_back();
    }
    void text(std::string_view piece) {
        if (open_.back().value != kNotWanted) found_[open_.back().value].append(piece);
    }

    static void onStart(void* self, const XML_Char* name, const XML_Char** attributes) {
        static_cast<Extraction*>(self)->start(name, attributesOf(attributes));
    }
    static void onEnd(void* self, const XML_Char* /*name*/) { static_cast<Extraction*>(self)->end(); }
    static void onText(void* self, const XML_Char* text, int length) {
        static_cast<Extraction*>(self)->text({text, static_cast<std::size_t>(length)});
    }
    static void onDoctype(void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
        static_cast<Extraction*>(self)->stop();
    }

    XmlPath path_;
    XML_Parser parser_;
    std::vector<Level> open_;
    std::vector<std::string> found_;
    bool stopped_ = false;
};

bool parse(XML_Parser parser, std::string_view text) {
    // In pieces, since expat counts lengths in int.
    constexpr std::size_t kPiece = std::size_t(1) << 20U;
    while (text.size() > kPiece) {
        if (XML_Parse(parser, text.data(), static_cast<int>(kPiece), 0) != XML_STATUS_OK) return false;
        text.remove_prefix(kPiece);
    }
    return XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
}

}  // namespace

Values extractXml(std::string_view text, std::string_view path) {
    Values values;
    const Parser parser(XML_ParserCreate(nullptr));
    if (!parser) throw std::bad_alloc();
    Extraction extraction(path, parser.get());
    values.malformed = !parse(parser.get(), text);
    values.found = extraction.takeFound();
    return values;
}

}  // namespace zuksw
