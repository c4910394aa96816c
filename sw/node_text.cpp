#include "sw/node_text.h"

#include "frame/narrow.h"
#include "platform/xml_node.h"

const std::wstring& NodeText::of(const Node& node, int form) {
    buffer_.text.clear();
    stream_.clear();  // what failed for another node does not fail for this one
    node.write(stream_, form);
    return buffer_.text;
}

std::streamsize NodeText::Buffer::xsputn(const char* bytes, std::streamsize count) {
    appendWidened(text, std::string_view(bytes, static_cast<std::size_t>(count)));
    return count;
}

NodeText::Buffer::int_type NodeText::Buffer::overflow(int_type byte) {
    const char character = traits_type::to_char_type(byte);
    if (!traits_type::eq_int_type(byte, traits_type::eof())) xsputn(&character, 1);
    return traits_type::not_eof(byte);
}
