#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/zuksw/language/element.h"

namespace zuksw {

/** Why a file is refused as a whole, and where. */
struct XmlError {
    std::size_t offset = 0;
    std::string text;
};

/** Takes a document apart into complete elements. */
class XmlSink {
  public:
    virtual ~XmlSink() = default;
    /** The root's name. An answer other than the empty string refuses the file for that reason. */
    virtual std::string onRoot(std::string_view name) = 0;
    /** An element at the level asked for, or a piece of text above it; valid during the call only. */
    virtual std::string onNode(const Element& node) = 0;
};

/** Reads the document in `bytes` and hands over each element at `level` (1 is the root itself). Bytes that
 * are valid UTF-8 are UTF-8; otherwise the whole file is ISO 8859-1, whatever it declares. Refused are
 * documents that are not well-formed, that have a DOCTYPE (so no entity is ever expanded), that nest deeper
 * than 64 elements or that hold an attribute longer than 64 KiB. */
std::optional<XmlError> readXml(std::string_view bytes, int level, XmlSink* sink);

}  // namespace zuksw
