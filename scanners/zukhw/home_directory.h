#pragma once

#include <vector>

#include "scanners/zukhw/accounts.h"

class Machine;

// The users of /etc/passwd by name who have a home, without those whose home lies on a file system that may
// never answer; machine.shared<LocalUsers>().
struct LocalUsers {
    explicit LocalUsers(Machine& machine);

    std::vector<const Account*> all;
};
