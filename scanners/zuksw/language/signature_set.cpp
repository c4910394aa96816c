#include "scanners/zuksw/language/signature_set.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "scanners/zuksw/language/line_index.h"
#include "scanners/zuksw/language/reference_graph.h"
#include "scanners/zuksw/language/signature_reader.h"
#include "scanners/zuksw/language/utf8.h"
#include "scanners/zuksw/setup/threads.h"

namespace zuksw {
namespace {

constexpr std::size_t kBrief = 100;                       // hardly any signature is shorter
constexpr std::size_t kMinPiece = std::size_t{1} << 20U;  // smaller ones are read before a thread has begun
constexpr std::size_t kPiecesOfThread = 4;                // so that all threads end at about the same time

// Takes the one signature of a piece.
class OneSignature : public XmlSink {
  public:
    OneSignature(PatternStore* patterns, Presets* presets) : patterns_(patterns), presets_(presets) {}

    std::string onRoot(std::string_view /*name*/) override { return {}; }
    bool keepsBlanks(std::string_view element) const override { return element == "Metadata"; }
    std::string onNode(const Element& node) override {
        SignatureReport report;
        signature = std::make_unique<const Signature>(readSignature(node, patterns_, presets_, &report));
        return {};
    }

    std::unique_ptr<const Signature> signature;

  private:
    PatternStore* patterns_;
    Presets* presets_;
};

template <typename Value>
void moveAll(std::vector<Value>* from, std::vector<Value>* to) {
    if (to->empty()) return to->swap(*from);
    to->insert(to->end(), std::make_move_iterator(from->begin()), std::make_move_iterator(from->end()));
}

}  // namespace

// False when there are too many.
bool SignatureSet::append(SignatureBatch batch) {
    for (Finding& finding : batch.findings) {
        if (finding.signature != Finding::kNone) finding.signature += signatures_.size();
    }
    for (SignatureReference& reference : batch.references) reference.from += signatures_.size();
    moveAll(&batch.signatures, &signatures_);
    moveAll(&batch.references, &references_);
    moveAll(&batch.findings, &findings_);
    asksForProcesses_ = asksForProcesses_ || batch.asksForProcesses;
    return signatures_.size() <= SignatureSink::kMaxSignatures;
}

// False when the file has to be read as a whole: it is small, or something is wrong with it and only its
// reader can say where.
bool SignatureSet::readPieces(unsigned threads, const std::atomic<bool>& stop) {
    const auto count = std::min<std::size_t>(threads * kPiecesOfThread, bytes_.size() / kMinPiece);
    if (threads < 2 || count < 2) return false;
    const std::vector<XmlPiece> pieces = cutXml(bytes_, "Signatures", "Signature", count);
    std::vector<SignatureBatch> batches(pieces.size());
    batches[0].signatures.reserve(std::min(bytes_.size() / kBrief, SignatureSink::kMaxSignatures));
    SharedQueries queries(&queries_);
    std::atomic<std::size_t> next{0};
    std::atomic<bool> refused{false};
    runOnThreads(threads, [&] {
        for (std::size_t i = next++; i < pieces.size(); i = next++) {
            SignatureSink sink(patterns_, presets_, stop, &queries, &batches[i]);
            if (!isUtf8(pieces[i].bytes) || readXml(pieces[i], 2, &sink)) refused = true;
            sink.shareQueries();
        }
    });
    if (refused) return false;
    return std::all_of(batches.begin(), batches.end(),
                       [this](SignatureBatch& batch) { return append(std::move(batch)); });
}

std::optional<XmlError> SignatureSet::readWhole(const std::atomic<bool>& stop) {
    signatures_.clear();
    references_.clear();
    findings_.clear();
    queries_ = QuerySet();
    isUtf8_ = isUtf8(bytes_);
    SignatureBatch batch;
    SharedQueries queries(&queries_);
    SignatureSink sink(patterns_, presets_, stop, &queries, &batch);
    std::optional<XmlError> error = readXml(XmlPiece{{}, bytes_, {}, 0, isUtf8_}, 2, &sink);
    sink.shareQueries();
    append(std::move(batch));
    return error;
}

std::string SignatureSet::read(std::string_view bytes, PatternStore* patterns, Presets* presets,
                               unsigned threads, const std::atomic<bool>& stop) {
    const std::string_view mark = bytes.substr(0, 2);
    if (mark == "\xFF\xFE" || mark == "\xFE\xFF") return "line 1, column 1: this is UTF-16; save it as UTF-8";
    bytes_ = bytes;
    patterns_ = patterns;
    presets_ = presets;
    if (!readPieces(threads, stop)) {
        const std::optional<XmlError> error = readWhole(stop);
        if (error && !stop) return LineIndex(bytes).describe(error->offset) + ": " + error->text;
    }
    if (stop) {
        *this = SignatureSet();
        return {};
    }
    if (!isUtf8_) {
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

std::unique_ptr<const Signature> SignatureSet::readAgain(std::size_t signature) const {
    const ListedSignature& listed = signatures_[signature];
    const std::string_view bytes = bytes_.substr(listed.begin, listed.end - listed.begin);
    OneSignature sink(patterns_, presets_);
    readXml(XmlPiece{"<Signatures>", bytes, "</Signatures>", listed.begin, isUtf8_}, 2, &sink);
    return std::move(sink.signature);
}

void SignatureSet::index() {
    std::vector<std::uint32_t> numbers;
    numbers.reserve(signatures_.size());
    for (std::size_t i = 0; i < signatures_.size(); ++i) {
        const std::uint32_t number = guids_.add(signatures_[i].guid);
        numbers.push_back(number);
        sameGuidEnds_.resize(guids_.size());
        if (++sameGuidEnds_[number] != 2 || signatures_[i].guid.empty()) continue;
        findings_.push_back(
            {Finding::Level::kWarning, EventCode::kDuplicateGuid, signatures_[i].begin, i,
             "another signature has the same guid; both run and both may report, so give one another"});
    }
    // From how many there are to where they begin; each that is put in moves that on, to where they end.
    std::uint32_t before = 0;
    for (std::uint32_t& count : sameGuidEnds_) before += std::exchange(count, before);
    sameGuid_.resize(signatures_.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        sameGuid_[sameGuidEnds_[numbers[i]]++] = static_cast<std::uint32_t>(i);
}

std::vector<std::size_t> SignatureSet::withGuid(std::string_view guid) const {
    const std::optional<std::uint32_t> number = guids_.find(guid);
    if (!number || guid.empty()) return {};
    const std::uint32_t begin = *number == 0 ? 0 : sameGuidEnds_[*number - 1];
    return {sameGuid_.begin() + begin, sameGuid_.begin() + sameGuidEnds_[*number]};
}

void SignatureSet::reject(std::size_t signature, EventCode code, std::size_t offset,
                          const std::string& text) {
    signatures_[signature].valid = false;
    findings_.push_back({Finding::Level::kError, code, offset, signature, text});
}

void SignatureSet::checkReferences() {
    for (const SignatureReference& reference : references_) {
        if (!withGuid(reference.guid).empty()) continue;
        reject(reference.from, EventCode::kUnknownGuid, reference.offset,
               "<Matched>: no signature has the guid '" + reference.guid + "'; correct it");
    }
}

// A node for each signature that refers to others and, behind them, one for each guid that is referred to:
// many signatures may refer to a guid that many others have. All other signatures need nobody.
void SignatureSet::arrange() {
    std::map<std::size_t, std::size_t> nodes;  // by signature, in ascending order
    for (const SignatureReference& reference : references_) nodes.emplace(reference.from, 0);
    std::vector<std::size_t> referring;
    for (auto& [signature, node] : nodes) {
        node = referring.size();
        referring.push_back(signature);
    }
    ReferenceGraph graph(referring.size());
    std::map<std::string_view, std::size_t> targets;  // by guid
    for (const SignatureReference& reference : references_) {
        const auto [target, isNew] = targets.try_emplace(reference.guid, graph.size());
        graph[nodes[reference.from]].push_back(target->second);
        if (!isNew) continue;
        std::vector<std::size_t>& members = graph.emplace_back();
        for (const std::size_t signature : withGuid(reference.guid)) {
            const auto member = nodes.find(signature);
            if (member != nodes.end()) members.push_back(member->second);
        }
    }
    const std::vector<bool> onCycle = nodesOnCycles(graph);
    for (std::size_t node = 0; node < referring.size(); ++node) {
        const std::size_t signature = referring[node];
        if (onCycle[node]) {
            reject(signature, EventCode::kCycle, signatures_[signature].begin,
                   "it depends on itself through <Matched>; break the cycle");
        }
        if (!signatures_[signature].valid) graph[node].clear();
    }
    std::vector<std::size_t>& others = waves_.emplace_back();
    for (std::size_t i = 0; i < signatures_.size(); ++i) {
        if (nodes.count(i) == 0) others.push_back(i);
    }
    for (const std::vector<std::size_t>& wave : arrangeInWaves(graph)) {
        std::vector<std::size_t>& signatures = waves_.emplace_back();
        for (const std::size_t node : wave) {
            if (node < referring.size()) signatures.push_back(referring[node]);
        }
    }
}

std::size_t SignatureSet::invalidCount() const {
    return static_cast<std::size_t>(std::count_if(signatures_.begin(), signatures_.end(),
                                                  [](const ListedSignature& s) { return !s.valid; }));
}

}  // namespace zuksw
