#pragma once

#include <vector>

#include "scanners/zukhw/accounts.h"

class Machine;

// The users of /etc/passwd by name, without those whose home lies on a file system that may never answer.
std::vector<const Account*> usersWithLocalHome(Machine& machine);
