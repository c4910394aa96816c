#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "scanners/zuksw/language/presets.h"
#include "scanners/zuksw/language/signature.h"
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

/** Signatures in file order, as a piece of the file gave them. */
struct SignatureBatch {
    std::vector<Signature> signatures;
    std::vector<std::size_t> offsets;  // where each begins
    std::vector<Finding> findings;     // with indexes into `signatures`
};

/** The signatures of one file, in file order. */
class SignatureSet {
  public:
    /** Reads the file in `bytes`, a large one on several threads. Returns an empty string, or why it is
     * rejected as a whole, with line and column. One invalid signature does not reject the others. */
    std::string read(std::string_view bytes, PatternStore* patterns, Presets* presets, unsigned threads);

    const std::vector<Signature>& signatures() const { return signatures_; }
    /** The signatures with that guid, by index; empty when there are none. */
    const std::vector<std::size_t>& withGuid(const std::string& guid) const;
    /** Signatures in the order in which they can be evaluated: each wave needs results of earlier waves only.
     */
    const std::vector<std::vector<std::size_t>>& waves() const { return waves_; }
    std::size_t invalidCount() const;

    /** In file order. */
    const std::vector<Finding>& findings() const { return findings_; }

  private:
    bool readPieces(std::string_view bytes, PatternStore* patterns, Presets* presets, unsigned threads);
    bool append(SignatureBatch batch);
    void index();
    void checkReferences();
    void arrange();
    void reject(std::size_t signature, EventCode code, std::size_t offset, const std::string& text);

    std::vector<Signature> signatures_;
    std::vector<std::size_t> offsets_;                    // where each begins
    std::unordered_map<std::string, std::size_t> guids_;  // guid to its place in sameGuid_
    std::vector<std::vector<std::size_t>> sameGuid_;
    std::vector<std::vector<std::size_t>> waves_;
    std::vector<Finding> findings_;
};

}  // namespace zuksw
