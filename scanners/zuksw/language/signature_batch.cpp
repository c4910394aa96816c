#include "scanners/zuksw/language/signature_batch.h"

#include <utility>

#include "scanners/zuksw/language/signature_reader.h"
#include "scanners/zuksw/language/suggestion.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxStrays = 100'000;  // elements and texts that are no signatures
constexpr std::size_t kShare = 256;          // queries that are shared at a time

}  // namespace

std::vector<std::uint32_t> SharedQueries::take(std::vector<FileQuery>* queries) {
    std::vector<std::uint32_t> numbers;
    numbers.reserve(queries->size());
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        for (FileQuery& query : *queries) numbers.push_back(queries_.add(std::move(query)));
    }
    queries->clear();
    return numbers;
}

std::string SignatureSink::onRoot(std::string_view name) {
    if (name == "Signatures") return {};
    return "the root is <" + std::string(name) + ">; it must be <Signatures>";
}

std::string SignatureSink::onNode(const Element& node) {
    if (stop_.load(std::memory_order_relaxed)) return "the reading was stopped";
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

void SignatureSink::add(const Element& element) {
    SignatureReport report;
    auto signature = std::make_unique<Signature>(readSignature(element, patterns_, presets_, &report));
    const std::size_t index = batch_.signatures.size();
    ListedSignature& listed = batch_.signatures.emplace_back();
    listed.guid = signature->guid;
    listed.name = signature->name;
    listed.begin = element.offset;
    listed.end = element.end;
    listed.valid = signature->valid;
    for (GuidReference& reference : signature->references)
        batch_.references.push_back({index, std::move(reference.guid), reference.offset});
    const auto note = [&](Finding::Level level, EventCode code, const std::vector<Problem>& problems) {
        for (const Problem& problem : problems)
            batch_.findings.push_back({level, code, problem.offset, index, problem.text});
    };
    note(Finding::Level::kAdvice, EventCode::kSignatureInvalid, report.advice);
    note(Finding::Level::kWarning, EventCode::kUnknownElement, report.ignored);
    note(Finding::Level::kError, report.newerLanguage ? EventCode::kLanguage : EventCode::kSignatureInvalid,
         report.problems);
    if (listed.valid) keep(std::move(signature), &listed);
}

void SignatureSink::keep(std::unique_ptr<const Signature> signature, ListedSignature* listed) {
    const std::size_t first = queries_.size();
    signature->detect->demand(&queries_);
    batch_.asksForProcesses = batch_.asksForProcesses || signature->detect->asksForProcesses();
    if (signature->detect->beginsWithWalk()) {
        beginnings_.push_back({batch_.signatures.size() - 1, first});
    } else {
        listed->signature = std::move(signature);
    }
    if (queries_.size() >= kShare) shareQueries();
}

void SignatureSink::shareQueries() {
    const std::vector<std::uint32_t> numbers = shared_->take(&queries_);
    for (const Beginning& beginning : beginnings_)
        batch_.signatures[beginning.signature].query = numbers[beginning.query];
    beginnings_.clear();
}

}  // namespace zuksw
