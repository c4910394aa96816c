#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The attributes of one start tag, in document order.
using XmlAttributes = std::vector<std::pair<std::string, std::string>>;

// The value of the attribute `name`, or null.
const std::string* findAttribute(const XmlAttributes& attributes, std::string_view name);
// The same; empty when there is none.
std::string attributeText(const XmlAttributes& attributes, std::string_view name);

// Receives a document's events in order; names and text are UTF-8.
class XmlEvents {
  public:
    virtual ~XmlEvents() = default;
    // path: the names of the open elements from the root to this one, joined with '/' ("KAV/ZUK/Hardware").
    virtual void onStart(const std::string& path, const XmlAttributes& attributes) = 0;
    virtual void onEnd(const std::string& /*path*/) {}
    virtual void onText(const std::string& /*path*/, std::string_view /*text*/) {}
};

// Reads the XML file at `path` into `events`. Returns an empty string, or what is wrong with the file: its
// name, the line, the reason. Events before the error have been delivered by then. External entities are
// never read; a document nested deeper than 1,000 elements or longer than 64 MiB is refused.
std::string readXmlFile(const std::string& path, XmlEvents* events);
