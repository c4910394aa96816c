#pragma once

#include <cstddef>
#include <vector>

#include "scanners/zukhw/update_logs.h"

class Machine;

// The updates that this machine's package managers have written down, the newest of each first: apt's
// history, or dpkg's log without it; dnf's database, or the logs of dnf and yum without it; zypp's history.
// Of rotated logs no more are read than give `enough` of them.
std::vector<PackageUpdate> readPackageUpdates(Machine& machine, std::size_t enough);

// Those of dnf's database, the newest first; empty when there is none.
std::vector<PackageUpdate> readDnfHistory(Machine& machine, std::size_t enough);
