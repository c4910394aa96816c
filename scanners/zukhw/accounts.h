#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Machine;

// A line of /etc/passwd.
struct Account {
    std::string name, password;  // password: "x" where it is kept in /etc/shadow
    std::uint32_t userId = 0, groupId = 0;
    std::string comment, home, shell;
};

// The users and groups that this system's files define; machine.shared<Accounts>(). Directory services, which
// may be behind a network, are not asked.
class Accounts {
  public:
    explicit Accounts(Machine& machine);

    // In the file's order.
    const std::vector<Account>& users() const { return users_; }
    // The first one of that name, or null.
    const Account* find(std::string_view name) const;
    // Empty when there is none.
    std::string groupName(std::uint32_t groupId) const;
    // The groups that list the user as a member, sorted.
    std::vector<std::string> groupsOf(std::string_view user) const;

  private:
    struct Group {
        std::string name;
        std::uint32_t id = 0;
        std::vector<std::string> members;
    };

    void readUsers(Machine& machine);
    void readGroups(Machine& machine);

    std::vector<Account> users_;
    std::vector<Group> groups_;
};
