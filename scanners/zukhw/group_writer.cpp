#include "scanners/zukhw/group_writer.h"

#include <algorithm>

#include "scanners/shared/xml_text.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::size_t kBlock = 32 * 1024;

}  // namespace

GroupWriter::GroupWriter(std::string_view group, const Deadline& deadline)
    : foot_(std::string("</").append(group).append(">")),
      deadline_(deadline),
      instance_(std::string("<").append(group).append(">")),
      head_(instance_.size()),
      written_(head_) {}

void GroupWriter::beginInstance() {
    finish();
    deadline_.check();
}

void GroupWriter::text(std::string_view field, std::string_view value) {
    switch (kindOfText(value)) {
        case TextKind::Plain:
            return raw(field, value);
        case TextKind::Clean:
            return escaped(field, value);
        case TextKind::Unclean:
            const std::string clean = cleanText(value);
            if (!clean.empty()) escaped(field, clean);
    }
}

void GroupWriter::escaped(std::string_view field, std::string_view text) {
    escaped_.clear();
    appendXmlText(&escaped_, text);
    raw(field, escaped_);
}

// All that is written goes through here: room is made once for all parts of a field.
void GroupWriter::raw(std::string_view field, std::string_view xmlSafe) {
    const std::size_t size = written_ + xmlSafe.size() + 2 * field.size() + std::string_view("<></>").size();
    if (instance_.size() < size) instance_.resize(2 * size);
    char* to = instance_.data() + written_;
    const auto add = [&to](std::string_view part) { to += part.copy(to, part.size()); };
    *to++ = '<';
    add(field);
    *to++ = '>';
    add(xmlSafe);
    *to++ = '<';
    *to++ = '/';
    add(field);
    *to = '>';
    written_ = size;
}

void GroupWriter::hardware(std::string_view field, std::string_view value) {
    const std::string clean = cleanText(value);
    if (!isPlaceholder(clean)) text(field, clean);
}

void GroupWriter::list(std::string_view field, const std::vector<std::string>& items) {
    std::string joined;
    for (const std::string& item : items) {
        const std::string clean = cleanText(item);
        if (clean.empty()) continue;
        if (!joined.empty()) joined += "; ";
        joined += clean;
    }
    text(field, joined);
}

void GroupWriter::finish() {
    if (written_ == head_) return;
    const std::size_t size = written_ + foot_.size();
    if (blocks_.empty() || blocks_.back().size() + size > kBlock) {
        blocks_.emplace_back();
        if (!instances_.empty()) blocks_.back().reserve(kBlock);  // many a group has one small instance
    }
    instances_.push_back({blocks_.size() - 1, blocks_.back().size(), size});
    blocks_.back().append(instance_, 0, written_).append(foot_);
    written_ = head_;
}

void GroupWriter::reorder(std::size_t first, const std::vector<std::size_t>& order) {
    const std::vector<Instance> before(instances_.begin() + static_cast<std::ptrdiff_t>(first),
                                       instances_.end());
    for (std::size_t i = 0; i < before.size(); ++i) instances_[first + i] = before[order.at(i)];
}

std::vector<std::string_view> GroupWriter::parts() const {
    std::vector<std::string_view> parts;
    for (const Instance& instance : instances_) {
        const char* begin = blocks_[instance.block].data() + instance.begin;
        const bool goesOn = !parts.empty() && parts.back().data() + parts.back().size() == begin;
        if (goesOn) {
            parts.back() = {parts.back().data(), parts.back().size() + instance.size};
        } else {
            parts.emplace_back(begin, instance.size);
        }
    }
    return parts;
}
