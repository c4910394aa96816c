#pragma once

#include <string>

class Machine;

// How the keyboard is set up, in the words of the X keyboard extension; machine.shared<KeyboardConfig>().
// Empty where nothing is set.
struct KeyboardConfig {
    explicit KeyboardConfig(Machine& machine);

    std::string layout;
    std::string variant;
    std::string model;
    std::string consoleKeymap;  // "de-latin1"
    std::string consoleFont;    // "eurlatgr"
};
