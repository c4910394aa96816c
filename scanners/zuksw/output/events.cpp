#include "scanners/zuksw/output/events.h"

#include <iterator>

#include "scanners/zuksw/output/xml_escape.h"

namespace zuksw {
namespace {

struct CodeRow {
    EventCode code;
    const char* name;
    const char* severity;
};
constexpr CodeRow kCodes[] = {
    {EventCode::kEncoding, "encoding", "warning"},
    {EventCode::kConfigUnknown, "config-unknown", "warning"},
    {EventCode::kConfigValue, "config-value", "warning"},
    {EventCode::kPresetUnused, "preset-unused", "info"},
    {EventCode::kSignatureInvalid, "signature-invalid", "error"},
    {EventCode::kUnknownElement, "unknown-element", "warning"},
    {EventCode::kDuplicateGuid, "duplicate-guid", "warning"},
    {EventCode::kCycle, "cycle", "error"},
    {EventCode::kUnknownGuid, "unknown-guid", "error"},
    {EventCode::kLanguage, "language", "error"},
    {EventCode::kStrayText, "stray-text", "warning"},
    {EventCode::kUnreadable, "unreadable", "warning"},
    {EventCode::kNotSearched, "not-searched", "warning"},
    {EventCode::kTooLarge, "too-large", "warning"},
    {EventCode::kBadFormat, "bad-format", "warning"},
    {EventCode::kChanged, "changed", "warning"},
    {EventCode::kDenied, "denied", "info"},
    {EventCode::kAmbiguous, "ambiguous", "warning"},
    {EventCode::kBadArchive, "bad-archive", "warning"},
    {EventCode::kArchiveLimit, "archive-limit", "warning"},
    {EventCode::kPackageDb, "package-db", "warning"},
    {EventCode::kVersionSyntax, "version-syntax", "warning"},
    {EventCode::kRowsLimit, "rows-limit", "warning"},
    {EventCode::kResultsLimit, "results-limit", "warning"},
    {EventCode::kTimeBudget, "time-budget", "warning"},
    {EventCode::kUndecided, "undecided", "warning"},
    {EventCode::kSandboxOff, "sandbox-off", "info"},
    {EventCode::kMoreEvents, "more-events", "warning"},
};

// What sums up the scan is told however much else there is to say.
bool isSummary(EventCode code) {
    return code >= EventCode::kResultsLimit;
}

const CodeRow& rowOf(EventCode code) {
    return kCodes[static_cast<std::size_t>(code)];
}

void appendEvent(EventCode code, std::uint64_t count, std::string_view guid, std::string_view path,
                 std::string_view text, std::string* out) {
    *out += "  <Event";
    appendAttribute("code", rowOf(code).name, out);
    appendAttribute("severity", rowOf(code).severity, out);
    appendAttribute("count", std::to_string(count), out);
    if (!guid.empty()) appendAttribute("guid", guid, out);
    if (!path.empty()) appendAttribute("path", path, out);
    *out += '>';
    appendXmlText(text, out);
    *out += "</Event>\n";
}

}  // namespace

void Events::setLimit(std::size_t limit) {
    const std::lock_guard<std::mutex> lock(mutex_);
    limit_ = limit;
    while (countedGroups() > limit_) dropLast();
}

std::size_t Events::countedGroups() const {
    return groups_.size() - summaries_;
}

void Events::dropLast() {
    const auto firstSummary = groups_.lower_bound(Key(EventCode::kResultsLimit, {}, {}));
    const auto last = std::prev(firstSummary);
    dropped_ += last->second.count;
    groups_.erase(last);
}

void Events::add(EventCode code, std::string_view guid, std::string_view text, std::string_view path) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto [entry, isNew] = groups_.try_emplace(Key(code, guid, text), Group{0, std::string(path)});
    Group& group = entry->second;
    ++group.count;
    if (!path.empty() && (group.path.empty() || path < group.path)) group.path = path;
    if (!isNew) return;
    if (isSummary(code)) {
        ++summaries_;
    } else if (countedGroups() > limit_) {
        dropLast();
    }
}

std::string Events::toXml() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Warnings>\n";
    for (const auto& [key, group] : groups_) {
        const auto& [code, guid, text] = key;
        appendEvent(code, group.count, guid, group.path, text, &xml);
    }
    if (dropped_ > 0) {
        appendEvent(EventCode::kMoreEvents, dropped_, {}, {},
                    "further events are left out; see limits/MaxEvents", &xml);
    }
    return xml + "</Warnings>\n";
}

}  // namespace zuksw
