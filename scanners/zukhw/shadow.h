#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

class Machine;

// How a user may log in with a password. None: with no password at all ("*"). Locked: the password was made
// useless ("!" before it).
enum class PasswordState { Set, Locked, Empty, None };

PasswordState passwordState(std::string_view field);
const char* passwordStateName(PasswordState state);

// /etc/shadow, which only root may read; machine.shared<Shadow>(). Of the passwords nothing is kept but what
// state they are in.
class Shadow {
  public:
    struct Entry {
        PasswordState password = PasswordState::None;
        // In days since 1970, and in days.
        std::optional<std::int64_t> changed, maxDays, expires;
    };

    explicit Shadow(Machine& machine);

    // Null when there is none.
    const Entry* find(const std::string& user) const;

  private:
    std::map<std::string, Entry> entries_;
};
