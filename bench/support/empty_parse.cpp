#include "bench/support/empty_parse.h"

#include <expat.h>
#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

namespace {
constexpr int kBlock = 64 << 10;

void onStart(void*, const XML_Char*, const XML_Char**) {}
void onEnd(void*, const XML_Char*) {}
void onText(void*, const XML_Char*, int) {}
}  // namespace

void parseWithEmptyHandlers(const std::string& path) {
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetElementHandler(parser, onStart, onEnd);
    XML_SetCharacterDataHandler(parser, onText);
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ssize_t length = 1;
    XML_Status status = XML_STATUS_OK;
    while (status == XML_STATUS_OK && length > 0) {
        length = read(file, XML_GetBuffer(parser, kBlock), kBlock);
        status = XML_ParseBuffer(parser, static_cast<int>(length), length <= 0);
    }
    close(file);
    XML_ParserFree(parser);
    if (status != XML_STATUS_OK) throw std::runtime_error("not well formed: " + path);
}
