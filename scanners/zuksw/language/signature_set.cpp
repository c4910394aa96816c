#include "scanners/zuksw/language/signature_set.h"

#include <algorithm>
#include <utility>

#include "scanners/zuksw/language/line_index.h"
#include "scanners/zuksw/language/reference_graph.h"
#include "scanners/zuksw/language/signature_reader.h"
#include "scanners/zuksw/language/utf8.h"
#include "scanners/zuksw/language/xml_reader.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxSignatures = 100'000;
constexpr std::size_t kMaxProblems = 20;  // of one signature

}  // namespace

class SignatureSink : public XmlSink {
  public:
    SignatureSink(SignatureSet* set, PatternStore* patterns, Presets* presets)
        : set_(set), patterns_(patterns), presets_(presets) {}

    std::string onRoot(std::string_view name) override {
        if (name == "Signatures") return {};
        return "the root is <" + std::string(name) + ">; it must be <Signatures>";
    }

    std::string onNode(const Element& node) override {
        if (node.name.empty()) {
            set_->findings_.push_back({Finding::Level::kWarning, EventCode::kStrayText, node.offset,
                                       Finding::kNone, "text between signatures is ignored; remove it"});
        } else if (node.name != "Signature") {
            set_->findings_.push_back({Finding::Level::kWarning, EventCode::kUnknownElement, node.offset,
                                       Finding::kNone,
                                       "unknown element <" + std::string(node.name) + "> is ignored"});
        } else if (set_->signatures_.size() == kMaxSignatures) {
            return "there are more than 100000 signatures; split the file";
        } else {
            set_->add(node, patterns_, presets_);
        }
        return {};
    }

  private:
    SignatureSet* set_;
    PatternStore* patterns_;
    Presets* presets_;
};

void SignatureSet::add(const Element& element, PatternStore* patterns, Presets* presets) {
    SignatureReport report;
    signatures_.push_back(readSignature(element, patterns, presets, &report));
    offsets_.push_back(element.offset);
    const std::size_t index = signatures_.size() - 1;
    const auto add = [&](Finding::Level level, EventCode code, const std::vector<Problem>& problems) {
        for (const Problem& problem : problems)
            findings_.push_back({level, code, problem.offset, index, problem.text});
    };
    add(Finding::Level::kAdvice, EventCode::kSignatureInvalid, report.advice);
    add(Finding::Level::kWarning, EventCode::kUnknownElement, report.ignored);
    if (report.problems.size() > kMaxProblems) report.problems.resize(kMaxProblems);
    add(Finding::Level::kError, report.newerLanguage ? EventCode::kLanguage : EventCode::kSignatureInvalid,
        report.problems);
}

std::string SignatureSet::read(std::string_view bytes, PatternStore* patterns, Presets* presets) {
    SignatureSink sink(this, patterns, presets);
    const std::optional<XmlError> error = readXml(bytes, 2, &sink);
    if (error) return LineIndex(bytes).describe(error->offset) + ": " + error->text;
    if (!isUtf8(bytes)) {
        findings_.push_back({Finding::Level::kWarning, EventCode::kEncoding, 0, Finding::kNone,
                             "the signatures are no UTF-8; they are read as ISO 8859-1"});
    }
    index();
    checkReferences();
    arrange();
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.offset < b.offset; });
    return {};
}

void SignatureSet::index() {
    guids_.reserve(signatures_.size());
    for (std::size_t i = 0; i < signatures_.size(); ++i) {
        const std::string& guid = signatures_[i].guid;
        if (guid.empty()) continue;
        const auto [entry, isNew] = guids_.emplace(guid, sameGuid_.size());
        if (isNew) sameGuid_.emplace_back();
        std::vector<std::size_t>& same = sameGuid_[entry->second];
        same.push_back(i);
        if (same.size() != 2) continue;
        findings_.push_back({Finding::Level::kWarning, EventCode::kDuplicateGuid, offsets_[i], i,
                             "another signature has the same guid; both run and both may report"});
    }
}

const std::vector<std::size_t>& SignatureSet::withGuid(const std::string& guid) const {
    static const std::vector<std::size_t> kNone;
    const auto found = guids_.find(guid);
    return found == guids_.end() ? kNone : sameGuid_[found->second];
}

void SignatureSet::reject(std::size_t signature, EventCode code, std::size_t offset,
                          const std::string& text) {
    signatures_[signature].valid = false;
    findings_.push_back({Finding::Level::kError, code, offset, signature, text});
}

void SignatureSet::checkReferences() {
    for (std::size_t i = 0; i < signatures_.size(); ++i) {
        for (const GuidReference& reference : signatures_[i].references) {
            if (!withGuid(reference.guid).empty()) continue;
            reject(i, EventCode::kUnknownGuid, reference.offset,
                   "<Matched>: no signature has the guid '" + reference.guid + "'; correct it");
        }
    }
}

// A node for each signature and, behind them, one for each guid: many signatures may refer to a guid that
// many others have.
void SignatureSet::arrange() {
    const std::size_t count = signatures_.size();
    ReferenceGraph graph(count);
    graph.insert(graph.end(), sameGuid_.begin(), sameGuid_.end());
    for (std::size_t i = 0; i < count; ++i) {
        for (const GuidReference& reference : signatures_[i].references) {
            const auto target = guids_.find(reference.guid);
            if (target != guids_.end()) graph[i].push_back(count + target->second);
        }
    }
    const std::vector<bool> onCycle = nodesOnCycles(graph);
    for (std::size_t i = 0; i < count; ++i) {
        if (onCycle[i])
            reject(i, EventCode::kCycle, offsets_[i],
                   "it depends on itself through <Matched>; break the cycle");
        if (!signatures_[i].valid) graph[i].clear();
    }
    for (std::vector<std::size_t>& wave : arrangeInWaves(graph)) {
        wave.erase(std::remove_if(wave.begin(), wave.end(), [&](std::size_t node) { return node >= count; }),
                   wave.end());
        if (!wave.empty()) waves_.push_back(std::move(wave));
    }
}

std::size_t SignatureSet::invalidCount() const {
    return static_cast<std::size_t>(
        std::count_if(signatures_.begin(), signatures_.end(), [](const Signature& s) { return !s.valid; }));
}

}  // namespace zuksw
