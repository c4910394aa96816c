#include "scanners/shared/xml_events.h"

#include <expat.h>
#include <fcntl.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <type_traits>

#include "platform/file_descriptor.h"

namespace {

constexpr int kBlock = 64 * 1024;
constexpr std::size_t kMaxBytes = std::size_t{64} * 1024 * 1024;
constexpr int kMaxDepth = 1000;

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser>;

struct State {
    XML_Parser parser;
    XmlEvents* events;
    std::string path;
    int depth;
};

void XMLCALL onStart(void* data, const XML_Char* name, const XML_Char** pairs) {
    auto& state = *static_cast<State*>(data);
    if (++state.depth > kMaxDepth) {
        XML_StopParser(state.parser, XML_FALSE);
        return;
    }
    if (!state.path.empty()) state.path += '/';
    state.path += name;
    XmlAttributes attributes;
    for (; *pairs != nullptr; pairs += 2) attributes.emplace_back(pairs[0], pairs[1]);
    state.events->onStart(state.path, attributes);
}

void XMLCALL onEnd(void* data, const XML_Char* name) {
    auto& state = *static_cast<State*>(data);
    --state.depth;
    state.events->onEnd(state.path);
    const std::size_t length = std::strlen(name);
    state.path.resize(state.path.size() - std::min(state.path.size(), length + 1));
}

void XMLCALL onText(void* data, const XML_Char* text, int length) {
    auto& state = *static_cast<State*>(data);
    state.events->onText(state.path, {text, static_cast<std::size_t>(length)});
}

std::string systemError(const std::string& path, const char* what) {
    return path + ": " + what + ": " + std::strerror(errno);  // NOLINT(concurrency-mt-unsafe)
}

std::string parseError(const std::string& path, XML_Parser parser) {
    const XML_Error code = XML_GetErrorCode(parser);
    const char* reason = code == XML_ERROR_ABORTED ? "elements are nested too deep" : XML_ErrorString(code);
    return path + ":" + std::to_string(XML_GetCurrentLineNumber(parser)) + ": not well-formed XML: " + reason;
}

}  // namespace

const std::string* findAttribute(const XmlAttributes& attributes, std::string_view name) {
    for (const auto& [key, value] : attributes) {
        if (key == name) return &value;
    }
    return nullptr;
}

std::string attributeText(const XmlAttributes& attributes, std::string_view name) {
    const std::string* value = findAttribute(attributes, name);
    return value == nullptr ? "" : *value;
}

std::string readXmlFile(const std::string& path, XmlEvents* events) {
    const FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!fd.valid()) return systemError(path, "cannot be opened");
    const Parser parser(XML_ParserCreate(nullptr));
    if (!parser) return path + ": out of memory";
    State state{parser.get(), events, {}, 0};
    XML_SetUserData(parser.get(), &state);
    XML_SetElementHandler(parser.get(), onStart, onEnd);
    XML_SetCharacterDataHandler(parser.get(), onText);
    for (std::size_t total = 0; total <= kMaxBytes;) {
        void* buffer = XML_GetBuffer(parser.get(), kBlock);
        if (buffer == nullptr) return parseError(path, parser.get());
        const ssize_t count = ::read(fd.get(), buffer, kBlock);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return systemError(path, "cannot be read");
        total += static_cast<std::size_t>(count);
        const XML_Status status = XML_ParseBuffer(parser.get(), static_cast<int>(count), count == 0);
        if (status != XML_STATUS_OK) return parseError(path, parser.get());
        if (count == 0) return "";
    }
    return path + ": longer than 64 MiB";
}
