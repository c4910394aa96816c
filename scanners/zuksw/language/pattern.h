#pragma once

#include <re2/re2.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "scanners/zuksw/language/pattern_syntax.h"

namespace zuksw {

/** A regular expression over bytes, compiled when it is first run. '.' does not match a line feed, '^' and
 * '$' are the ends of the data. Any thread may use it. */
class Pattern {
  public:
    Pattern(std::string text, std::int64_t memory, std::vector<PatternGroup> groups)
        : text_(std::move(text)), memory_(memory), groups_(std::move(groups)) {}

    const std::string& text() const { return text_; }
    const std::vector<PatternGroup>& groups() const { return groups_; }
    /** Null when it could not be compiled after all. */
    const re2::RE2* engine() const;

  private:
    std::string text_;
    std::int64_t memory_;
    std::vector<PatternGroup> groups_;
    mutable std::once_flag once_;
    mutable std::unique_ptr<re2::RE2> engine_;
};

/** Hands out one Pattern for each text. Any thread may use it. */
class PatternStore {
  public:
    /** memory: bytes that the engine may use for one pattern. */
    explicit PatternStore(std::int64_t memory) : memory_(memory) {}

    /** Null and a sentence in *error when the text is no pattern or needs more memory than allowed. */
    std::shared_ptr<const Pattern> get(const std::string& text, std::string* error);

  private:
    std::shared_ptr<const Pattern> make(const std::string& text, std::string* error) const;

    std::int64_t memory_;
    std::mutex mutex_;
    std::unordered_map<std::string, std::shared_ptr<const Pattern>> patterns_;
};

/** The text as a pattern that matches just it. */
std::string quotePattern(std::string_view text);

/** A pattern that matches a text only as a whole. */
std::string wholePattern(const std::string& text);

}  // namespace zuksw
