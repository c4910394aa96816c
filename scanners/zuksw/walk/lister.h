#pragma once

#include <string>
#include <vector>

#include "scanners/zuksw/evaluation/cause.h"
#include "scanners/zuksw/language/path_glob.h"
#include "scanners/zuksw/walk/listings.h"
#include "scanners/zuksw/walk/walker.h"

namespace zuksw {

/** Finds paths by listing just the directories that a glob names, without a walk. */
class Lister {
  public:
    Lister(const Walker::Places& places, Listings* listings) : places_(places), listings_(*listings) {}

    /** The paths that match `steps` below the directory `base` ("" for the root), in byte order, each once.
     * One that is named in full is handed out without a look whether it is there. ".." steps up. */
    std::vector<std::string> list(const std::string& base, const GlobSteps& steps);

    /** Why something may be missing in what list() handed out so far. */
    Causes causes() const { return causes_; }

  private:
    struct Place {
        std::string directory;
        std::size_t step;
        std::uint64_t depth;
    };

    void visit(const Place& place, const GlobSteps& steps);
    void list(const Place& place, const GlobSteps& steps);
    void readDirectory(const Place& place, const GlobSteps& steps);
    void visitEntry(const Place& place, const GlobSteps& steps, std::string_view name, unsigned char type);
    bool mayList(const std::string& directory) const;

    Walker::Places places_;
    Listings& listings_;
    DirectoryReader::Buffer buffer_;  // made when it is needed
    std::vector<Place> open_;
    std::vector<std::string> found_;
    Causes causes_ = 0;
};

}  // namespace zuksw
