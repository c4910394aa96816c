#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "scanners/zuksw/index/file_query.h"
#include "scanners/zuksw/index/text_numbers.h"
#include "scanners/zuksw/language/signature_batch.h"

namespace zuksw {

/** The signatures of one file, in file order. */
class SignatureSet {
  public:
    /** Reads the file in `bytes`, a large one on several threads. Returns an empty string, or why it is
     * rejected as a whole, with line and column. One invalid signature does not reject the others. When
     * `stop` is set before all is read, the set is empty. What is handed in must outlive the set. */
    std::string read(std::string_view bytes, PatternStore* patterns, Presets* presets, unsigned threads,
                     const std::atomic<bool>& stop);

    const std::vector<ListedSignature>& signatures() const { return signatures_; }
    /** Reads a valid signature that was not kept. Any thread may ask. */
    std::unique_ptr<const Signature> readAgain(std::size_t signature) const;
    /** What the walk shall find for all of them. Take it once. */
    QuerySet takeQueries() { return std::move(queries_); }
    /** Whether one of them must know which processes run. */
    bool asksForProcesses() const { return asksForProcesses_; }
    /** The signatures with that guid, by index; empty when there are none. */
    std::vector<std::size_t> withGuid(std::string_view guid) const;
    /** Signatures in the order in which they can be evaluated: each wave needs results of earlier waves only.
     */
    const std::vector<std::vector<std::size_t>>& waves() const { return waves_; }
    std::size_t invalidCount() const;

    /** In file order. */
    const std::vector<Finding>& findings() const { return findings_; }

  private:
    bool readPieces(unsigned threads, const std::atomic<bool>& stop);
    std::optional<XmlError> readWhole(const std::atomic<bool>& stop);
    bool append(SignatureBatch batch);
    void index();
    void checkReferences();
    void arrange();
    void reject(std::size_t signature, EventCode code, std::size_t offset, const std::string& text);

    std::string_view bytes_;
    bool isUtf8_ = true;
    PatternStore* patterns_ = nullptr;
    Presets* presets_ = nullptr;

    std::vector<ListedSignature> signatures_;
    std::vector<SignatureReference> references_;
    QuerySet queries_;
    bool asksForProcesses_ = false;
    TextNumbers guids_;
    std::vector<std::uint32_t> sameGuid_;      // signatures, those with one guid side by side
    std::vector<std::uint32_t> sameGuidEnds_;  // where those of a guid end, by its number
    std::vector<std::vector<std::size_t>> waves_;
    std::vector<Finding> findings_;
};

}  // namespace zuksw
