#pragma once

#include <cstddef>
#include <string_view>

#include "scanners/shared/packages/deb822.h"
#include "scanners/shared/packages/package.h"

// The status files of dpkg and opkg: deb822 text, a paragraph a package.
struct StatusDialect {
    std::string_view manager;
    bool statusNeeded;        // false: what is listed without a Status field is installed
    bool sourceIsName;        // of a package without a Source field
    std::uint64_t sizeUnit;   // bytes that 1 in Installed-Size stands for; 0 when nobody knows
    bool finalNewlineNeeded;  // a text that ends inside a line was cut
};

// Reads the packages of such a text one by one in their order, those that are not installed included. A
// paragraph without name, without a version though its files are there, or with a status that cannot be
// understood is broken; it is passed over.
class StatusReader {
  public:
    // Both must outlive it.
    StatusReader(std::string_view text, const StatusDialect& dialect);

    // False at the end of the text.
    bool next(Package* package);

    std::size_t broken() const { return broken_; }            // paragraphs that were passed over
    std::size_t firstBroken() const { return firstBroken_; }  // where the first of them begins

  private:
    bool readParagraph(Package* package);

    Deb822Reader reader_;
    const StatusDialect& dialect_;
    std::size_t size_;
    bool cut_;
    bool atEnd_ = false;
    std::size_t broken_ = 0;
    std::size_t firstBroken_ = 0;
};

// All packages of the text.
PackageList parseStatusFile(std::string_view text, const StatusDialect& dialect);
