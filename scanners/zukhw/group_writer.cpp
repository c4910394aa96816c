#include "scanners/zukhw/group_writer.h"

#include "scanners/shared/xml_text.h"
#include "scanners/zukhw/placeholders.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr std::size_t kBlock = 32 * 1024;

void appendTag(std::string* out, std::string_view opening, std::string_view name) {
    for (const char c : opening) *out += c;
    *out += name;
    *out += '>';
}

}  // namespace

void GroupWriter::beginInstance() {
    finish();
    deadline_.check();
}

void GroupWriter::text(const char* field, std::string_view value) {
    if (!isClean(value)) {
        const std::string clean = cleanText(value);
        if (!clean.empty()) cleaned(field, clean);
        return;
    }
    cleaned(field, value);
}

void GroupWriter::cleaned(const char* field, std::string_view text) {
    open(field);
    appendXmlText(&instance_, text);
    close(field);
}

void GroupWriter::hardware(const char* field, std::string_view value) {
    const std::string clean = cleanText(value);
    if (!isPlaceholder(clean)) text(field, clean);
}

void GroupWriter::list(const char* field, const std::vector<std::string>& items) {
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
    if (instance_.empty()) return;
    const std::size_t size = instance_.size() + 2 * group_.size() + 5;
    if (blocks_.empty() || blocks_.back().size() + size > kBlock) {
        blocks_.emplace_back();
        if (instances_ != 0) blocks_.back().reserve(kBlock);  // many a group has one small instance
    }
    appendTag(&blocks_.back(), "<", group_);
    blocks_.back() += instance_;
    appendTag(&blocks_.back(), "</", group_);
    ++instances_;
    instance_.clear();
}

void GroupWriter::raw(const char* field, std::string_view xmlSafe) {
    open(field);
    instance_ += xmlSafe;
    close(field);
}

void GroupWriter::open(const char* field) {
    appendTag(&instance_, "<", field);
}

void GroupWriter::close(const char* field) {
    appendTag(&instance_, "</", field);
}
