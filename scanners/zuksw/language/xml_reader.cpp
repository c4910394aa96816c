#include "scanners/zuksw/language/xml_reader.h"

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "scanners/zuksw/language/utf8.h"
#include "scanners/zuksw/language/xml_explanation.h"

namespace zuksw {
namespace {

constexpr int kMaxDepth = 64;
constexpr std::size_t kMaxAttribute = std::size_t{64} * 1024;
constexpr std::size_t kBlock = std::size_t{1} * 1024 * 1024;  // expat counts in int
constexpr std::size_t kArena = std::size_t{64} * 1024;

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

class Reading {
  public:
    /** skipped: bytes that the parser is given but the document does not have, less those it has before. */
    Reading(XML_Parser parser, std::ptrdiff_t skipped, int level, XmlSink* sink)
        : parser_(parser),
          skipped_(skipped),
          level_(level),
          sink_(sink),
          buffer_(kArena),
          memory_(buffer_.data(), kArena) {}

    void start(const XML_Char* name, const XML_Char** pairs);
    void end();
    void text(std::string_view piece);
    void refuse(std::string why);
    std::size_t offset() const;
    /** The innermost element that is open; empty above `level`. */
    std::string_view openElement() const { return open_.empty() ? std::string_view() : open_.back()->name; }

    std::optional<XmlError> error;
    /** Expat calls back through C frames, which an exception must not cross. */
    std::exception_ptr thrown;

  private:
    std::string_view keep(std::string_view text);
    Element* make(std::string_view name);
    bool wantsText() const;
    void flushText();
    void deliver(const Element& node);
    void clear();

    XML_Parser parser_;
    std::ptrdiff_t skipped_;
    int level_;
    XmlSink* sink_;
    std::vector<char> buffer_;
    std::pmr::monotonic_buffer_resource memory_;
    std::vector<Element*> open_;  // from the element at `level_` down
    std::string text_;
    std::size_t textOffset_ = 0;
    bool textIsBlank_ = true;
    int depth_ = 0;
};

std::string_view Reading::keep(std::string_view text) {
    if (text.empty()) return {};
    auto* copy = static_cast<char*>(memory_.allocate(text.size(), 1));
    std::memcpy(copy, text.data(), text.size());
    return {copy, text.size()};
}

Element* Reading::make(std::string_view name) {
    void* place = memory_.allocate(sizeof(Element), alignof(Element));
    return new (place) Element(keep(name), offset(), &memory_);  // its memory goes with the arena
}

std::size_t Reading::offset() const {
    return static_cast<std::size_t>(std::max<XML_Index>(0, XML_GetCurrentByteIndex(parser_) - skipped_));
}

void Reading::refuse(std::string why) {
    if (error) return;
    error = XmlError{offset(), std::move(why)};
    XML_StopParser(parser_, XML_FALSE);
}

void Reading::deliver(const Element& node) {
    if (error) return;
    std::string why = sink_->onNode(node);
    if (!why.empty()) refuse(std::move(why));
}

void Reading::clear() {
    open_.clear();
    memory_.release();
}

bool Reading::wantsText() const {
    if (!textIsBlank_) return depth_ > 0;
    return std::any_of(open_.begin(), open_.end(),
                       [this](const Element* e) { return sink_->keepsBlanks(e->name); });
}

void Reading::flushText() {
    if (text_.empty()) return;
    if (wantsText()) {
        Element* node = make({});
        node->offset = textOffset_;
        node->text = keep(text_);
        if (open_.empty()) {
            deliver(*node);
            clear();
        } else {
            open_.back()->children.push_back(node);
        }
    }
    text_.clear();
    textIsBlank_ = true;
}

void Reading::start(const XML_Char* name, const XML_Char** pairs) {
    flushText();
    if (++depth_ > kMaxDepth) return refuse("elements are nested deeper than 64 levels; nest fewer");
    if (depth_ == 1) {
        std::string why = sink_->onRoot(name);
        if (!why.empty()) return refuse(std::move(why));
    }
    const bool isKept = depth_ >= level_;
    Element* element = isKept ? make(name) : nullptr;
    if (isKept)
        element->attributes.reserve(static_cast<std::size_t>(XML_GetSpecifiedAttributeCount(parser_)) / 2);
    for (; *pairs != nullptr; pairs += 2) {
        const std::string_view value = pairs[1];
        if (value.size() > kMaxAttribute) return refuse("an attribute is longer than 64 KiB; shorten it");
        if (isKept) element->attributes.push_back({keep(pairs[0]), keep(value)});
    }
    if (!isKept) return;
    if (!open_.empty()) open_.back()->children.push_back(element);
    open_.push_back(element);
}

void Reading::end() {
    flushText();
    --depth_;
    if (open_.empty()) return;
    Element* element = open_.back();
    open_.pop_back();
    if (!open_.empty()) return;
    element->end = offset() + static_cast<std::size_t>(XML_GetCurrentByteCount(parser_));
    deliver(*element);
    clear();
}

void Reading::text(std::string_view piece) {
    // The place of a text is that of its first character that is no blank.
    if (textIsBlank_) {
        const std::size_t blanks = std::min(piece.find_first_not_of(" \t\r\n"), piece.size());
        textOffset_ = offset() + blanks;
        textIsBlank_ = blanks == piece.size();
    }
    text_.append(piece);
}

template <typename Action>
void guarded(void* data, Action action) {
    auto& reading = *static_cast<Reading*>(data);
    if (reading.error || reading.thrown) return;
    try {
        action(reading);
    } catch (...) {
        reading.thrown = std::current_exception();
        reading.refuse("out of memory");
    }
}

void XMLCALL onStart(void* data, const XML_Char* name, const XML_Char** pairs) {
    guarded(data, [&](Reading& reading) { reading.start(name, pairs); });
}

void XMLCALL onEnd(void* data, const XML_Char* /*name*/) {
    guarded(data, [](Reading& reading) { reading.end(); });
}

void XMLCALL onText(void* data, const XML_Char* text, int length) {
    guarded(data, [&](Reading& reading) { reading.text({text, static_cast<std::size_t>(length)}); });
}

void XMLCALL onDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    guarded(data, [](Reading& reading) { reading.refuse("a DOCTYPE is not allowed; remove it"); });
}

// False when the reading is over.
bool parse(std::string_view bytes, bool last, XML_Parser parser, Reading* reading) {
    do {
        const std::string_view block = bytes.substr(0, kBlock);
        bytes.remove_prefix(block.size());
        const XML_Status status =
            XML_Parse(parser, block.data(), static_cast<int>(block.size()), last && bytes.empty() ? 1 : 0);
        if (reading->thrown) std::rethrow_exception(reading->thrown);
        if (status != XML_STATUS_OK) {
            reading->refuse(explainXml(XML_GetErrorCode(parser), reading->openElement()));
        }
        if (reading->error) return false;
    } while (!bytes.empty());
    return true;
}

}  // namespace

std::optional<XmlError> readXml(const XmlPiece& piece, int level, XmlSink* sink) {
    const Parser parser(XML_ParserCreate(piece.isUtf8 ? "UTF-8" : "ISO-8859-1"));
    if (!parser) throw std::bad_alloc();
    const auto skipped =
        static_cast<std::ptrdiff_t>(piece.before.size()) - static_cast<std::ptrdiff_t>(piece.offset);
    Reading reading(parser.get(), skipped, level, sink);
    XML_SetUserData(parser.get(), &reading);
    XML_SetElementHandler(parser.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(parser.get(), onText);
    XML_SetStartDoctypeDeclHandler(parser.get(), onDoctype);
    const bool whole = piece.after.empty();
    const bool goOn = parse(piece.before, false, parser.get(), &reading) &&
                      parse(piece.bytes, whole, parser.get(), &reading);
    if (goOn && !whole) parse(piece.after, true, parser.get(), &reading);
    return reading.error;
}

std::optional<XmlError> readXml(std::string_view bytes, int level, XmlSink* sink) {
    return readXml(XmlPiece{{}, bytes, {}, 0, isUtf8(bytes)}, level, sink);
}

std::vector<XmlPiece> cutXml(std::string_view bytes, const std::string& root, const std::string& child,
                             std::size_t count) {
    std::vector<XmlPiece> pieces;
    std::size_t begin = 0;
    for (std::size_t i = 1; i < count; ++i) {
        const std::size_t end = bytes.find("<" + child + " ", bytes.size() / count * i);
        if (end == bytes.npos || end <= begin) continue;
        pieces.push_back({{}, bytes.substr(begin, end - begin), "</" + root + ">", begin});
        begin = end;
    }
    pieces.push_back({{}, bytes.substr(begin), {}, begin});
    for (std::size_t i = 1; i < pieces.size(); ++i) pieces[i].before = "<" + root + ">";
    return pieces;
}

}  // namespace zuksw
