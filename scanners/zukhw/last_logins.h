#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/zukhw/paged_file.h"

class Machine;

// When each user logged in last, by /var/log/lastlog and by the database that takes its place;
// machine.shared<LastLogins>(). The file has a record at the place of every user id, most of them holes: only
// those asked for are read.
class LastLogins {
  public:
    explicit LastLogins(Machine& machine);

    // Seconds since 1970; no value when the user never logged in.
    std::optional<std::int64_t> of(std::uint32_t userId, std::string_view name);

  private:
    void readDatabase(Machine& machine);
    std::optional<std::int64_t> inFile(std::uint32_t userId);

    PagedFile file_;
    unsigned recordSize_ = 0;
    unsigned timeSize_ = 0;
    bool bigEndian_ = false;
    std::map<std::string, std::int64_t, std::less<>> inDatabase_;  // by the user's name
};
