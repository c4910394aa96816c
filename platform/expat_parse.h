#pragma once

#include <expat.h>

#include <exception>
#include <memory>
#include <type_traits>

#include "platform/tree_builder.h"

// One parse by expat: bytes in, a tree or a failure out. Failed allocations throw std::bad_alloc; what the
// sink throws comes through.
class ExpatParse {
  public:
    // Takes the settings from `reader`; warnings go to `sink`.
    ExpatParse(const NodeReader& reader, NodeSink& sink);

    // Where the next bytes go. The size grows while a single token (a tag, a comment) fills one buffer after
    // the other: expat looks at such a token from its beginning each time.
    void* buffer();
    std::size_t bufferSize() const { return bufferSize_; }
    // Parses the bytes that were put into the buffer. False after a failure.
    bool parse(std::size_t length, bool isLast);

    // Of the failure; the text is ASCII.
    const char* message() const;
    int line() const;

    std::unique_ptr<Node> takeTree() { return builder_.takeTree(); }

  private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free>;

    template <class Action>
    static void guarded(void* self, Action action) noexcept;
    static void onStart(void* self, const XML_Char* name, const XML_Char** attributes);
    static void onEnd(void* self, const XML_Char* name);
    static void onText(void* self, const XML_Char* text, int length);
    static void onComment(void* self, const XML_Char* text);
    static void onInstruction(void* self, const XML_Char* target, const XML_Char* data);
    static void onEntity(void* self, const XML_Char* name, int isParameter, const XML_Char* value, int length,
                         const XML_Char* base, const XML_Char* system, const XML_Char* publicId,
                         const XML_Char* notation);
    static void onAttributeDeclaration(void* self, const XML_Char* element, const XML_Char* attribute,
                                       const XML_Char* type, const XML_Char* value, int isRequired);
    static void onSkippedEntity(void* self, const XML_Char* name, int isParameter);
    static int onExternalEntity(XML_Parser parser, const XML_Char* context, const XML_Char* base,
                                const XML_Char* system, const XML_Char* publicId);
    void setHandlers(const NodeReader& reader);
    void countDeclaration();
    void countDefaults(const XML_Char** attributes);
    void stop(const char* reason);
    void warn(const char* what, const char* which);

    NodeSink& sink_;
    int depthLimit_;
    TreeBuilder builder_;
    Parser parser_;
    std::size_t bufferSize_;
    int declarations_ = 0;
    unsigned long long addedBytes_ = 0;  // by attribute defaults
    const char* stopReason_ = nullptr;   // null: expat knows
    std::exception_ptr thrown_;          // by a handler: it must not pass through expat
};
