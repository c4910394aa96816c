#pragma once

#include <string_view>
#include <vector>

#include "scanners/shared/packages/package.h"
#include "scanners/shared/packages/status_file.h"

// The texts of dpkg's database; dpkg_database.h knows where they lie.

// The packages of `status`: one by one, with the text outliving the reader, or all of them.
StatusReader readDpkgStatus(std::string_view text);
PackageList parseDpkgStatus(std::string_view text);

// The package of a file in `status.d`: images without dpkg keep a copy of each package's control file there,
// so there is no Status field and what is listed is installed.
PackageList parseDpkgControl(std::string_view text);

// The packages that apt's extended_states calls automatically installed.
class AutomaticPackages {
  public:
    // The text must outlive it.
    explicit AutomaticPackages(std::string_view aptStates);

    bool contains(const Package& package) const;

  private:
    struct Entry {
        std::string_view name, architecture;
        bool operator<(const Entry& other) const;
    };

    std::vector<Entry> entries_;  // sorted
};
