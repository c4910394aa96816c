#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// A piece of nested text as Lisp and Nix write it.
struct Token {
    enum class Kind {
        End,
        Open,  // any of ( [ {
        Close,
        String,  // in double quotes
        Word,    // anything else up to a blank, a bracket or a quote; '=' and ';' are words of their own
    };
    Kind kind = Kind::End;
    std::string text;  // of a string what stands between its quotes, escapes taken out
};

class TokenReader {
  public:
    explicit TokenReader(std::string_view text) : text_(text) {}

    // `text` of a string that is never closed goes to the end.
    Token next();

    // How many brackets are open behind the last token; more closed than opened count as none.
    std::size_t depth() const { return depth_; }

  private:
    std::string takeString();

    std::string_view text_;
    std::size_t depth_ = 0;
};
