#pragma once

#include <cstdint>
#include <optional>

#include "scanners/zukhw/paged_file.h"

class Machine;

// /var/log/lastlog: when each user logged in last; machine.shared<LastLogins>(). The file has a record at the
// place of every user id, most of them holes: only those asked for are read.
class LastLogins {
  public:
    explicit LastLogins(Machine& machine);

    // Seconds since 1970; no value when the user never logged in.
    std::optional<std::int64_t> of(std::uint32_t userId);

  private:
    PagedFile file_;
    unsigned recordSize_ = 0;
    unsigned timeSize_ = 0;
    bool bigEndian_ = false;
};
