#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "scanners/zuksw/evaluation/answer.h"
#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/row.h"
#include "scanners/zuksw/language/condition_reader.h"

namespace zuksw {

/** What a File condition demands of a file besides its name and place. */
class FileRestrictions {
  public:
    /** types: the EntryType set that the condition selects. */
    void read(ConditionReader& attributes, unsigned types);

    /** Whether some restriction looks into the file. */
    bool readsContent() const { return format_.has_value() || !digests_.empty(); }
    Answer accept(const DiskFile& file, const Row& row, const Context& context) const;

  private:
    Answer acceptTarget(const DiskFile& file, const Row& row, const Context& context) const;
    Answer acceptFormat(const DiskFile& file, const Context& context) const;

    std::optional<GlobTemplate> target_;
    std::optional<std::uint64_t> minSize_;
    std::optional<std::uint64_t> maxSize_;
    std::optional<bool> executable_;
    std::optional<bool> owned_;
    std::optional<std::size_t> format_;
    std::vector<std::string> digests_;
};

}  // namespace zuksw
