#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "scanners/zuksw/evaluation/check.h"
#include "scanners/zuksw/language/element.h"
#include "scanners/zuksw/language/pattern.h"
#include "scanners/zuksw/language/scope.h"

namespace zuksw {

/** A mention of another signature. */
struct GuidReference {
    std::string guid;
    std::size_t offset = 0;
};

/** Turns the elements of one Detect into conditions. */
class DetectReader {
  public:
    DetectReader(Scope* scope, PatternStore* patterns) : scope_(scope), patterns_(patterns) {}

    /** Detect itself, an All. Null when it is so wrong that there is no condition. */
    std::unique_ptr<Check> readDetect(const Element& element);
    /** The conditions inside a group. */
    std::vector<std::unique_ptr<Check>> readChildren(const Element& element);

    void addReference(std::string_view guid, std::size_t offset) {
        references_.push_back({std::string(guid), offset});
    }
    std::vector<GuidReference> takeReferences() { return std::move(references_); }

  private:
    std::unique_ptr<Check> read(const Element& element, std::string_view kind);

    Scope* scope_;
    PatternStore* patterns_;
    std::uint32_t position_ = 0;
    std::vector<GuidReference> references_;
};

}  // namespace zuksw
