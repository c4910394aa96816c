#pragma once

#include <bitset>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zuksw {

/** A glob for one name, without '/' and without braces: '*', '?', '[a-z]', '[!a-z]', '\' quotes the next
 * byte. It works on bytes, and case counts. */
class NameGlob {
  public:
    /** Nothing and the reason in *error when the text is no glob. */
    static std::optional<NameGlob> parse(std::string_view text, std::string* error);

    bool matches(std::string_view name) const;

    /** True when it matches exactly one name, prefix(). */
    bool isLiteral() const { return literal_; }
    bool matchesAll() const { return tokens_.size() == 1 && tokens_[0].type == Type::kRun; }
    /** The same as a regular expression over bytes, to be matched as a whole. */
    std::string asPattern() const;
    /** What every match begins and ends with; of one that is literal the beginning is all. */
    const std::string& prefix() const { return prefix_; }
    const std::string& suffix() const { return suffix_; }

  private:
    enum class Type : unsigned char { kByte, kAny, kClass, kRun };
    struct Token {
        Type type;
        unsigned char value = 0;  // the byte, or which of classes_
    };
    bool parseClass(std::string_view text, std::size_t* at, std::string* error);
    bool accepts(const Token& token, char byte) const;
    void summarise();

    std::vector<Token> tokens_;
    std::vector<std::bitset<256>> classes_;
    std::string prefix_;
    std::string suffix_;
    bool literal_ = false;
};

/** The texts that `{a,b}` stands for, nested braces included. Nothing and the reason in *error when braces do
 *  not close or stand for more than 1,000 texts. */
std::optional<std::vector<std::string>> expandBraces(std::string_view text, std::string* error);

/** The text as a glob that matches just it. */
std::string quoteGlob(std::string_view text);

}  // namespace zuksw
