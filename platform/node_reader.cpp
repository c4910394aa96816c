#include <cwchar>
#include <memory>
#include <string>

#include "platform/ascii.h"
#include "platform/expat_parse.h"
#include "platform/input_file.h"
#include "platform/xml_node.h"

namespace {
std::string narrow(const wchar_t* text) {
    std::string bytes;
    for (; *text != L'\0'; ++text) bytes.push_back(static_cast<char>(*text));
    return bytes;
}

// Feeds the whole file to the parse; false after a failure of either.
bool parseFile(InputFile& file, ExpatParse& parse) {
    for (;;) {
        void* buffer = parse.buffer();
        const std::size_t length = file.read(buffer, parse.bufferSize());
        if (file.failure() != nullptr || !parse.parse(length, length == 0)) return false;
        if (length == 0) return true;
    }
}
}  // namespace

int NodeReader::process(const String& fileName, int /*mode*/) {
    errorCount = 0;
    const std::string path = narrow(fileName.text);
    const auto reportUnreadable = [&](const char* reason) {
        ++errorCount;
        sink_.onCriticalError(asciiMessage("cannot read " + path + ": " + reason), 0);
        return 1;
    };

    std::unique_ptr<Node> tree;
    try {
        InputFile file(path.c_str());
        if (file.failure() != nullptr) return reportUnreadable(file.failure());
        ExpatParse parse(*this, sink_);
        if (!parseFile(file, parse)) {
            if (file.failure() != nullptr) return reportUnreadable(file.failure());
            ++errorCount;
            sink_.onError(asciiMessage(parse.message()), parse.line());
            return 1;
        }
        tree = parse.takeTree();
    } catch (const std::bad_alloc&) {
        return reportUnreadable("out of memory");
    }
    sink_.onNodeTree(tree.release());
    return 0;
}
