#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "scanners/zukhw/wtmp.h"

class Machine;

// A login of a person, open or ended.
struct Login {
    LoginRecord record;
    std::optional<std::int64_t> ended;  // no value while it is open, or when nothing tells of its end
    bool open = false;
};

// The newest logins of /var/log/wtmp, the newest first, at most kMaxLogins.
constexpr std::size_t kMaxLogins = 100;
std::vector<Login> readLogins(Machine& machine);

// The same of records in the order of the file.
std::vector<Login> findLogins(const std::vector<LoginRecord>& records);

// The newest of the open sessions that systemd-logind keeps; no value without one.
std::optional<Login> readNewestSession(Machine& machine);
