#pragma once

#include <cstddef>
#include <string_view>

// Reads "Name: value" text as Debian's tools write it, one field at a time: a line that begins with a blank
// goes on with the field before it, an empty line ends a paragraph. Everything returned points into the text.
class Deb822Reader {
  public:
    enum class Item {
        Field,
        EndOfParagraph,  // after the last line of each paragraph
        BadLine,         // neither a field nor a continuation; it is passed over
        End,
    };

    explicit Deb822Reader(std::string_view text) : text_(text), rest_(text) {}

    Item next();

    // Of the last field: its name as written, its first line without blanks at the ends, and the lines that
    // go on with it.
    std::string_view name() const { return name_; }
    std::string_view value() const;
    std::string_view untrimmedValue() const;  // with the blanks at its end
    std::string_view continuation() const { return continuation_; }

    // Where the last item begins in the text.
    std::size_t offset() const { return offset_; }

  private:
    std::string_view takeContinuation();

    std::string_view text_;
    std::string_view rest_;
    std::string_view name_;
    std::string_view value_;  // as it stands behind the colon
    std::string_view continuation_;
    std::size_t offset_ = 0;
    bool inParagraph_ = false;
};
