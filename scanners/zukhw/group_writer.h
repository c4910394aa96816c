#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "scanners/zukhw/deadline.h"

// Receives what a collector finds, instance by instance, field by field in their documented order, and keeps
// it as XML. What is not known is simply not written: empty text, an optional without value and an instance
// without a field leave no trace. Field names are literals; each is given once per instance.
class GroupWriter {
  public:
    // group: the element name. The deadline must outlive the writer.
    GroupWriter(std::string_view group, const Deadline& deadline);

    // Ends the instance before, if any. The place where a group that takes too long is cut.
    void beginInstance();

    // Any text, cleaned (see cleanText).
    void text(std::string_view field, std::string_view value);
    // Text that a hardware maker filled in: the same, and nothing when it is a placeholder.
    void hardware(std::string_view field, std::string_view value);
    void boolean(std::string_view field, bool value) { raw(field, value ? "true" : "false"); }
    void boolean(std::string_view field, std::optional<bool> value) {
        if (value) boolean(field, *value);
    }
    template <typename Number>
    void number(std::string_view field, Number value) {
        static_assert(std::is_integral_v<Number> && !std::is_same_v<Number, bool>);
        raw(field, std::to_string(value));
    }
    template <typename Number>
    void number(std::string_view field, std::optional<Number> value) {
        if (value) number(field, *value);
    }
    // The items, each cleaned, empty ones left out, joined with "; ".
    void list(std::string_view field, const std::vector<std::string>& items);

    // Ends the instance before, if any.
    void finish();
    // Drops the instance that was begun and not ended, for a collector that was cut.
    void dropUnfinished() { written_ = head_; }

    // Of the finished ones.
    std::size_t instances() const { return instances_.size(); }
    // Puts the instances from the `first` on, all of which are finished, into another order: their numbers,
    // counted from it. So that many need not be kept twice, only because they are found in no order.
    void reorder(std::size_t first, const std::vector<std::size_t>& order);
    // All finished instances, in as few parts as they lie in. A long group is never copied as a whole.
    std::vector<std::string_view> parts() const;

  private:
    struct Instance {
        std::size_t block, begin, size;
    };

    void escaped(std::string_view field, std::string_view text);
    void raw(std::string_view field, std::string_view xmlSafe);

    std::string foot_;  // what ends an instance
    const Deadline& deadline_;
    // The instance that is being written, from what begins each on. Behind `written_` stands what is left of
    // longer ones, since a string that grew by each field would be filled with NULs first.
    std::string instance_;
    std::size_t head_;  // the length of what begins it
    std::size_t written_;
    std::string escaped_;  // the text of one, kept for its memory
    std::vector<Instance> instances_;
    std::vector<std::string> blocks_;
};
