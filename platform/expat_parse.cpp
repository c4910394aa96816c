// Makes expat's header declare the limits on entity expansion, which the library has.
#define XML_DTD

#include "platform/expat_parse.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/ascii.h"

namespace {
constexpr std::size_t kBufferSize = std::size_t{64} << 10;
constexpr std::size_t kLargestBuffer = std::size_t{16} << 20;

// What a document declares may make it larger. No scanner declares anything, and a tree takes up to thirty
// times what it is made of, so there is no harm in narrow limits: entities may expand to this many times
// the document once they come to this many bytes,
constexpr float kMaxAmplification = 4;
constexpr unsigned long long kMaxAddedBytes = 1 << 20;
// and attribute defaults may add as many bytes and no more. expat expands entities within entities by
// recursion and compares each attribute declared with all before it, so the number of declarations counts
// as well.
constexpr int kMaxDeclarations = 1000;
}  // namespace

ExpatParse::ExpatParse(const NodeReader& reader, NodeSink& sink)
    : sink_(sink),
      depthLimit_(reader.depthLimit),
      builder_(reader.keepLayout),
      parser_(XML_ParserCreate(nullptr)),
      bufferSize_(kBufferSize) {
    if (parser_ == nullptr) throw std::bad_alloc();
    setHandlers(reader);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser_.get(), kMaxAmplification);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(parser_.get(), kMaxAddedBytes);
}

void ExpatParse::setHandlers(const NodeReader& reader) {
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, onStart, onEnd);
    XML_SetCharacterDataHandler(parser, onText);
    if (!reader.dropComments) XML_SetCommentHandler(parser, onComment);
    if (!reader.dropInstructions) XML_SetProcessingInstructionHandler(parser, onInstruction);
    XML_SetEntityDeclHandler(parser, onEntity);
    XML_SetAttlistDeclHandler(parser, onAttributeDeclaration);
    XML_SetSkippedEntityHandler(parser, onSkippedEntity);
    XML_SetExternalEntityRefHandler(parser, onExternalEntity);
}

void* ExpatParse::buffer() {
    void* buffer = XML_GetBuffer(parser_.get(), static_cast<int>(bufferSize_));
    if (buffer == nullptr) throw std::bad_alloc();
    return buffer;
}

bool ExpatParse::parse(std::size_t length, bool isLast) {
    const XML_Index before = XML_GetCurrentByteIndex(parser_.get());
    const XML_Status status = XML_ParseBuffer(parser_.get(), static_cast<int>(length), isLast);
    if (thrown_ != nullptr) std::rethrow_exception(thrown_);
    const bool stuck = XML_GetCurrentByteIndex(parser_.get()) == before;
    bufferSize_ = stuck ? std::min(bufferSize_ * 2, kLargestBuffer) : kBufferSize;
    return status == XML_STATUS_OK;
}

const char* ExpatParse::message() const {
    return stopReason_ != nullptr ? stopReason_ : XML_ErrorString(XML_GetErrorCode(parser_.get()));
}

int ExpatParse::line() const {
    return static_cast<int>(std::min<XML_Size>(XML_GetCurrentLineNumber(parser_.get()), INT_MAX));
}

// Runs a handler's work, unless the parse was stopped: expat still delivers an event or two then.
template <class Action>
void ExpatParse::guarded(void* self, Action action) noexcept {
    auto& parse = *static_cast<ExpatParse*>(self);
    if (parse.stopReason_ != nullptr) return;
    try {
        action(parse);
    } catch (...) {
        parse.thrown_ = std::current_exception();
        parse.stop("out of memory");
    }
}

void ExpatParse::onStart(void* self, const XML_Char* name, const XML_Char** attributes) {
    guarded(self, [=](ExpatParse& parse) {
        const std::size_t limit = static_cast<std::size_t>(std::max(parse.depthLimit_, 0));
        if (limit > 0 && parse.builder_.depth() >= limit) return parse.stop("elements nested too deep");
        if (*attributes != nullptr) parse.countDefaults(attributes);
        parse.builder_.startElement(name, attributes);
    });
}

void ExpatParse::onEnd(void* self, const XML_Char* /*name*/) {
    guarded(self, [](ExpatParse& parse) { parse.builder_.endElement(); });
}

void ExpatParse::onText(void* self, const XML_Char* text, int length) {
    const std::string_view characters(text, static_cast<std::size_t>(length));
    guarded(self, [=](ExpatParse& parse) { parse.builder_.addText(characters); });
}

void ExpatParse::onComment(void* self, const XML_Char* text) {
    guarded(self, [=](ExpatParse& parse) { parse.builder_.addComment(text); });
}

void ExpatParse::onInstruction(void* self, const XML_Char* target, const XML_Char* data) {
    guarded(self, [=](ExpatParse& parse) { parse.builder_.addInstruction(target, data); });
}

void ExpatParse::onEntity(void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                          const XML_Char*, const XML_Char*, const XML_Char*) {
    guarded(self, [](ExpatParse& parse) { parse.countDeclaration(); });
}

void ExpatParse::onAttributeDeclaration(void* self, const XML_Char*, const XML_Char*, const XML_Char*,
                                        const XML_Char*, int) {
    guarded(self, [](ExpatParse& parse) { parse.countDeclaration(); });
}

void ExpatParse::onSkippedEntity(void* self, const XML_Char* name, int /*isParameter*/) {
    guarded(self, [=](ExpatParse& parse) { parse.warn("entity skipped: ", name); });
}

int ExpatParse::onExternalEntity(XML_Parser parser, const XML_Char*, const XML_Char*, const XML_Char* system,
                                 const XML_Char*) {
    guarded(XML_GetUserData(parser), [=](ExpatParse& parse) {
        parse.warn("external entity skipped: ", system == nullptr ? "" : system);
    });
    return XML_STATUS_OK;
}

void ExpatParse::countDeclaration() {
    if (++declarations_ > kMaxDeclarations) stop("too many declarations");
}

// Those that the tag itself gives stand first.
void ExpatParse::countDefaults(const XML_Char** attributes) {
    for (const XML_Char** text = attributes + XML_GetSpecifiedAttributeCount(parser_.get()); *text != nullptr;
         ++text) {
        addedBytes_ += sizeof(StringMap::Entry) + std::strlen(*text);
    }
    if (addedBytes_ > kMaxAddedBytes) stop("too many attribute defaults");
}

void ExpatParse::stop(const char* reason) {
    stopReason_ = reason;
    XML_StopParser(parser_.get(), XML_FALSE);
}

void ExpatParse::warn(const char* what, const char* which) {
    sink_.onWarning(asciiMessage(std::string(what) + which), line());
}
