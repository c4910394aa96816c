#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/shared/output_file.h"
#include "scanners/zukhw/machine.h"

enum class GroupStatus { Ok, Empty, Denied, Timeout, Unsupported };

struct GroupReport {
    std::string_view group;
    GroupStatus status = GroupStatus::Unsupported;
    std::size_t instances = 0;
    std::int64_t milliseconds = 0;
};

// What ScanInfo tells about the scan itself; machine.shared<ScanRecord>().
struct ScanRecord {
    explicit ScanRecord(Machine&) {}

    std::string root;          // of a copied machine, else empty
    std::int64_t started = 0;  // seconds since 1970
    Deadline::Clock::time_point startedClock = Deadline::Clock::now();
    std::vector<GroupReport> reports;  // of the groups asked for, in the catalogue's order
};

// Collects the groups with these configuration names and writes the whole document. Unknown names and groups
// that were cut are told on standard output, one line each. False when the document could not be written.
bool scan(const std::vector<std::string>& configNames, Machine* machine, OutputFile* output);
