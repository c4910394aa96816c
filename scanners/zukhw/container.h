#pragma once

#include <string>
#include <vector>

class Machine;

// The container that a system runs in, if it does; machine.shared<Container>().
struct Container {
    explicit Container(Machine& machine);

    bool found = false;
    std::string name;  // "Docker"; empty when only its presence shows
    std::string version;
    std::string id;
    std::vector<std::string> evidence;  // the files that agree
};
