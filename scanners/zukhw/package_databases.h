#pragma once

#include <functional>
#include <vector>

#include "scanners/shared/packages/package.h"

class Machine;

// The packages that each manager's database says are installed, in its order; empty when the manager is not
// used here. What is broken in a database is skipped and counted. Nothing is written, locked or created.

std::vector<Package> readRpmPackages(Machine& machine);
std::vector<Package> readApkPackages(Machine& machine);
std::vector<Package> readOpkgPackages(Machine& machine);
std::vector<Package> readPacmanPackages(Machine& machine);
std::vector<Package> readFlatpakPackages(Machine& machine);
std::vector<Package> readSnapPackages(Machine& machine);
std::vector<Package> readPortagePackages(Machine& machine);
std::vector<Package> readXbpsPackages(Machine& machine);
// Of all users' profiles, and the system's.
std::vector<Package> readNixPackages(Machine& machine);
std::vector<Package> readGuixPackages(Machine& machine);

// Of dpkg, which has the most packages, each is passed on as soon as it is read, and no more used then.
using TakePackage = std::function<void(Package&)>;
void readDpkgPackages(Machine& machine, const TakePackage& take);
