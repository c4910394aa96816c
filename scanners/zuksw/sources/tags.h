#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/index/file_query.h"

namespace zuksw {

/** A software identification tag (ISO/IEC 19770-2). */
class TagObject : public Object {
  public:
    Text property(std::string_view name, Machine& machine) const override;
    std::string identity() const override { return path; }

    std::string name;
    std::string version;
    std::string tagId;
    std::string regid;  // of who made the tag, else of whoever is named first
    std::string path;
    bool isPrimary = true;  // false: of a corpus, a patch or a supplement, which are no installed software
};

/** Reads a tag; nothing when the bytes are none. */
std::optional<TagObject> parseTag(std::string_view bytes);

/** The tags of the machine, read when first asked for. Any thread may ask. */
class Tags {
  public:
    /** What the walk must find for them. */
    static FileQuery query();

    struct Found {
        std::vector<std::shared_ptr<const TagObject>> tags;  // primary ones, in byte order of their paths
        Causes causes = 0;                                   // why some may be missing
    };
    const Found& all(Machine& machine);

  private:
    void read(Machine& machine);

    std::once_flag once_;
    Found found_;
};

}  // namespace zuksw
