// Any bytes are read without harm, and the markup of a tree reads as the same tree.
#include <cstdlib>
#include <memory>
#include <sstream>

#include "frame/xml_parser.h"
#include "fuzz/support/memory_file.h"

namespace {
// The markup of the tree; aborts where there should be one and is none.
std::string readAndWrite(const MemoryFile& file, bool mustBeSound) {
    XMLParser parser(nullptr, file.widePath().c_str());
    const Node* root = parser.getRootNode();
    if ((parser.errors == 0) != (root != nullptr) || (mustBeSound && root == nullptr)) std::abort();
    std::ostringstream out;
    if (root != nullptr) root->write(out, 1);
    return out.str();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string once = readAndWrite(MemoryFile(data, size), false);
    if (once.empty()) return 0;
    if (readAndWrite(MemoryFile(once.data(), once.size()), true) != once) std::abort();
    return 0;
}
