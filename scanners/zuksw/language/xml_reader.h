#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
    /** Whether text that is all blank shall be handed over inside elements of that name, however deep. */
    virtual bool keepsBlanks(std::string_view /*element*/) const { return true; }
};

/** Reads the document in `bytes` and hands over each element at `level` (1 is the root itself). Bytes that
 * are valid UTF-8 are UTF-8; otherwise the whole file is ISO 8859-1, whatever it declares. Refused are
 * documents that are not well-formed, that have a DOCTYPE (so no entity is ever expanded), that nest deeper
 * than 64 elements or that hold an attribute longer than 64 KiB. */
std::optional<XmlError> readXml(std::string_view bytes, int level, XmlSink* sink);

/** A piece of a document, with what makes it one that can be read by itself. */
struct XmlPiece {
    std::string before;
    std::string_view bytes;
    std::string after;
    std::size_t offset = 0;  // of `bytes` in the document
    bool isUtf8 = true;      // else ISO 8859-1
};

/** Cuts a UTF-8 document with the root `root` before children `child` into about `count` pieces that can be
 *  read at the same time. Where it was no child but, say, a comment that was cut, no piece is right by
 * itself: when one of them is refused, read the document as a whole. */
std::vector<XmlPiece> cutXml(std::string_view bytes, const std::string& root, const std::string& child,
                             std::size_t count);

/** Reads a piece; offsets are those in the document. */
std::optional<XmlError> readXml(const XmlPiece& piece, int level, XmlSink* sink);

}  // namespace zuksw
