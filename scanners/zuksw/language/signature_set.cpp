#include "scanners/zuksw/language/signature_set.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

#include "scanners/zuksw/language/line_index.h"
#include "scanners/zuksw/language/reference_graph.h"
#include "scanners/zuksw/language/signature_reader.h"
#include "scanners/zuksw/language/suggestion.h"
#include "scanners/zuksw/language/utf8.h"
#include "scanners/zuksw/language/xml_reader.h"
#include "scanners/zuksw/setup/threads.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxSignatures = 100'000;
constexpr std::size_t kMaxStrays = 100'000;               // of one signature
constexpr std::size_t kBrief = 100;                       // hardly any signature is shorter
constexpr std::size_t kMinPiece = std::size_t{1} << 20U;  // smaller ones are read before a thread has begun

// Takes the signatures out of one piece of the file.
class SignatureSink : public XmlSink {
  public:
    SignatureSink(PatternStore* patterns, Presets* presets, SignatureBatch* batch)
        : patterns_(patterns), presets_(presets), batch_(*batch) {}

    std::string onRoot(std::string_view name) override {
        if (name == "Signatures") return {};
        return "the root is <" + std::string(name) + ">; it must be <Signatures>";
    }

    std::string onNode(const Element& node) override {
        if (node.name != "Signature" && ++strays_ > kMaxStrays)
            return "more than 100000 elements and texts are no signatures; remove them";
        if (node.name.empty()) {
            batch_.findings.push_back({Finding::Level::kWarning, EventCode::kStrayText, node.offset,
                                       Finding::kNone, "text between signatures is ignored; remove it"});
        } else if (node.name != "Signature") {
            batch_.findings.push_back({Finding::Level::kWarning, EventCode::kUnknownElement, node.offset,
                                       Finding::kNone,
                                       "unknown element <" + std::string(node.name) + "> is ignored; " +
                                           suggest(node.name, {"Signature"})});
        } else if (batch_.signatures.size() == kMaxSignatures) {
            return "there are more than 100000 signatures; split the file";
        } else {
            add(node);
        }
        return {};
    }

  private:
    void add(const Element& element);

    PatternStore* patterns_;
    Presets* presets_;
    SignatureBatch& batch_;
    std::size_t strays_ = 0;
};

void SignatureSink::add(const Element& element) {
    SignatureReport report;
    batch_.signatures.push_back(readSignature(element, patterns_, presets_, &report));
    batch_.offsets.push_back(element.offset);
    const std::size_t index = batch_.signatures.size() - 1;
    const auto note = [&](Finding::Level level, EventCode code, const std::vector<Problem>& problems) {
        for (const Problem& problem : problems)
            batch_.findings.push_back({level, code, problem.offset, index, problem.text});
    };
    note(Finding::Level::kAdvice, EventCode::kSignatureInvalid, report.advice);
    note(Finding::Level::kWarning, EventCode::kUnknownElement, report.ignored);
    note(Finding::Level::kError, report.newerLanguage ? EventCode::kLanguage : EventCode::kSignatureInvalid,
         report.problems);
}

template <typename Value>
void moveAll(std::vector<Value>* from, std::vector<Value>* to) {
    to->insert(to->end(), std::make_move_iterator(from->begin()), std::make_move_iterator(from->end()));
}

}  // namespace

// False when there are too many.
bool SignatureSet::append(SignatureBatch batch) {
    for (Finding& finding : batch.findings) {
        if (finding.signature != Finding::kNone) finding.signature += signatures_.size();
    }
    moveAll(&batch.signatures, &signatures_);
    moveAll(&batch.offsets, &offsets_);
    moveAll(&batch.findings, &findings_);
    return signatures_.size() <= kMaxSignatures;
}

// False when the file has to be read as a whole: it is small, or something is wrong with it and only its
// reader can say where.
bool SignatureSet::readPieces(std::string_view bytes, PatternStore* patterns, Presets* presets,
                              unsigned threads) {
    const auto count = std::min<std::size_t>(threads, bytes.size() / kMinPiece);
    if (count < 2 || !isUtf8(bytes)) return false;
    const std::vector<XmlPiece> pieces = cutXml(bytes, "Signatures", "Signature", count);
    std::vector<SignatureBatch> batches(pieces.size());
    std::atomic<std::size_t> next{0};
    std::atomic<bool> refused{false};
    runOnThreads(threads, [&] {
        for (std::size_t i = next++; i < pieces.size(); i = next++) {
            SignatureSink sink(patterns, presets, &batches[i]);
            if (readXml(pieces[i], 2, &sink)) refused = true;
        }
    });
    if (refused) return false;
    signatures_.reserve(std::min(bytes.size() / kBrief, kMaxSignatures));
    return std::all_of(batches.begin(), batches.end(),
                       [this](SignatureBatch& batch) { return append(std::move(batch)); });
}

std::string SignatureSet::read(std::string_view bytes, PatternStore* patterns, Presets* presets,
                               unsigned threads) {
    const std::string_view mark = bytes.substr(0, 2);
    if (mark == "\xFF\xFE" || mark == "\xFE\xFF") return "line 1, column 1: this is UTF-16; save it as UTF-8";
    if (!readPieces(bytes, patterns, presets, threads)) {
        *this = SignatureSet();
        SignatureBatch batch;
        SignatureSink sink(patterns, presets, &batch);
        const std::optional<XmlError> error = readXml(bytes, 2, &sink);
        if (error) return LineIndex(bytes).describe(error->offset) + ": " + error->text;
        append(std::move(batch));
    }
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
        findings_.push_back(
            {Finding::Level::kWarning, EventCode::kDuplicateGuid, offsets_[i], i,
             "another signature has the same guid; both run and both may report, so give one another"});
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
