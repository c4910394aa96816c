#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/files/file_object.h"
#include "scanners/zuksw/files/file_tree.h"
#include "scanners/zuksw/files/open_files.h"
#include "scanners/zuksw/language/pattern.h"
#include "scanners/zuksw/output/events.h"
#include "scanners/zuksw/setup/budget.h"
#include "scanners/zuksw/setup/configuration.h"
#include "scanners/zuksw/sources/library_paths.h"
#include "scanners/zuksw/sources/packages.h"
#include "scanners/zuksw/sources/process_table.h"
#include "scanners/zuksw/sources/system_facts.h"
#include "scanners/zuksw/sources/tags.h"
#include "scanners/zuksw/walk/file_finder.h"
#include "scanners/zuksw/walk/territory.h"

namespace zuksw {

class Outcomes;

/** The machine that is scanned and all that conditions share. What is expensive is read once, when somebody
 *  asks first. Any thread may use it. */
class Machine {
  public:
    Machine(const Configuration& configuration, const FileTree& tree, const Territory& territory,
            const Budget& budget, Events& events, PatternStore& patterns);

    const Configuration& configuration;
    const FileTree& tree;
    const Territory& territory;
    const Budget& budget;
    Events& events;
    PatternStore& patterns;

    Gaps gaps;
    FileFinder files;
    OpenFiles openFiles;
    SystemFacts system;
    ProcessTable processes;
    LibraryPaths libraries;
    Tags tags;
    Packages packages;
    Outcomes* outcomes = nullptr;  // of the signatures evaluated so far

    std::atomic<std::uint64_t> opened{0};
    std::atomic<std::uint64_t> bytes{0};

    /** Counts bytes about to be read; the causes when they must not be read any more. */
    Causes takeBytes(std::uint64_t count);

    /** The installed package that owns the file. */
    Text ownerOf(const std::string& path);
};

}  // namespace zuksw
