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
    std::string service;  // the program that let the user in, "sshd"; empty when it is not told
    std::string display;  // the kind of session: "x11", "wayland", "tty"; the same
    std::string source;   // the path that tells of it, relative to the root
};

constexpr std::size_t kMaxLogins = 100;
constexpr char kLoginFile[] = "var/log/wtmp";
constexpr char kLoginDatabase[] = "var/lib/wtmpdb/wtmp.db";
constexpr char kOpenSessions[] = "run/systemd/sessions";

// The newest logins of the file or of the database, the newest first, at most kMaxLogins.
std::vector<Login> readLogins(Machine& machine);
std::vector<Login> readDatabaseLogins(Machine& machine);

// The same of records in the order of the file.
std::vector<Login> findLogins(const std::vector<LoginRecord>& records);

// The newest of the open sessions that systemd-logind keeps; no value without one.
std::optional<Login> readNewestSession(Machine& machine);
