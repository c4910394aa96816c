#pragma once

#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace zuksw {

struct Attribute {
    std::string_view name;
    std::string_view value;
};

/** A node of an XML file: an element, or a piece of text when `name` is empty. Everything it points to lives
 *  in the memory resource that it was made with. */
struct Element {
    Element(std::string_view elementName, std::size_t where, std::pmr::memory_resource* memory)
        : name(elementName), offset(where), attributes(memory), children(memory) {}

    /** The attribute's value, or null. */
    const std::string_view* find(std::string_view attribute) const {
        for (const Attribute& a : attributes) {
            if (a.name == attribute) return &a.value;
        }
        return nullptr;
    }

    std::string_view name;
    std::string_view text;
    std::size_t offset;   // in bytes from the beginning of the file
    std::size_t end = 0;  // of an element that is handed over by itself: the offset behind it
    std::pmr::vector<Attribute> attributes;
    std::pmr::vector<const Element*> children;
};

/** True when the text holds nothing but XML white space. */
inline bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == text.npos;
}

}  // namespace zuksw
