#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/index/file_query.h"
#include "scanners/zuksw/language/presets.h"
#include "scanners/zuksw/language/signature.h"
#include "scanners/zuksw/language/xml_reader.h"
#include "scanners/zuksw/output/events.h"

namespace zuksw {

/** Something that reading a signature file brought to light. */
struct Finding {
    enum class Level {
        kAdvice,  // for the author only
        kWarning,
        kError,  // the signature is invalid
    };
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    Level level;
    EventCode code;
    std::size_t offset;
    std::size_t signature;  // which one, or kNone
    std::string text;
};

/** What is kept of each signature. Of one that is false unless the walk finds something, this is all: of very
 *  many signatures most are for products that are not there, and the others are cheaper to read again than
 *  all of them to keep. */
struct ListedSignature {
    std::string guid;
    std::string name;
    std::size_t begin = 0;  // of its element in the file
    std::size_t end = 0;
    bool valid = true;
    std::optional<std::uint32_t> query;          // the number of what the walk has to find
    std::unique_ptr<const Signature> signature;  // null when there is a query, or when it is invalid
};

/** A mention of one signature in another. */
struct SignatureReference {
    std::size_t from = 0;  // which signature
    std::string guid;
    std::size_t offset = 0;
};

/** Signatures in file order, as a piece of the file gave them, with indexes into that piece. */
struct SignatureBatch {
    std::vector<ListedSignature> signatures;
    std::vector<SignatureReference> references;
    std::vector<Finding> findings;
    bool asksForProcesses = false;
};

/** Numbers the queries of all pieces. Any thread may add. */
class SharedQueries {
  public:
    explicit SharedQueries(QuerySet* queries) : queries_(*queries) {}
    /** Takes the queries; returns their numbers. */
    std::vector<std::uint32_t> take(std::vector<FileQuery>* queries);

  private:
    std::mutex mutex_;
    QuerySet& queries_;
};

/** Takes the signatures out of one piece of the file. */
class SignatureSink : public XmlSink {
  public:
    static constexpr std::size_t kMaxSignatures = 100'000;

    /** stop: ends the reading when set. */
    SignatureSink(PatternStore* patterns, Presets* presets, const std::atomic<bool>& stop,
                  SharedQueries* shared, SignatureBatch* batch)
        : patterns_(patterns), presets_(presets), stop_(stop), shared_(shared), batch_(*batch) {}

    std::string onRoot(std::string_view name) override;
    std::string onNode(const Element& node) override;
    bool keepsBlanks(std::string_view element) const override { return element == "Metadata"; }
    /** Call when all is read. */
    void shareQueries();

  private:
    // A signature and the query that it begins with, by their indexes.
    struct Beginning {
        std::size_t signature;
        std::size_t query;
    };
    void add(const Element& element);
    void keep(std::unique_ptr<const Signature> signature, ListedSignature* listed);

    PatternStore* patterns_;
    Presets* presets_;
    const std::atomic<bool>& stop_;
    SharedQueries* shared_;
    SignatureBatch& batch_;
    std::size_t strays_ = 0;
    std::vector<FileQuery> queries_;  // not shared yet
    std::vector<Beginning> beginnings_;
};

}  // namespace zuksw
