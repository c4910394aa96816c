#pragma once

#include <ostream>
#include <streambuf>
#include <string>

class Node;

// Takes nodes as text: what they write is widened byte by byte, with sign extension, as it comes. One
// object serves any number of nodes, so that a scan makes one stream and not one a node.
class NodeText {
  public:
    // A failed allocation comes out of of() instead of cutting the text short.
    NodeText() : stream_(&buffer_) { stream_.exceptions(std::ios::badbit); }

    // The text of the node and all below it; valid until the next call.
    const std::wstring& of(const Node& node, int form);

  private:
    class Buffer final : public std::streambuf {
      public:
        std::wstring text;

      protected:
        std::streamsize xsputn(const char* bytes, std::streamsize count) override;
        int_type overflow(int_type byte) override;
    };

    Buffer buffer_;
    std::ostream stream_;
};
