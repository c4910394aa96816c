#pragma once

#include <string>

class Machine;

// How the system's keyboard is set up; machine.shared<KeyboardSettings>(). What is not set is empty.
struct KeyboardSettings {
    explicit KeyboardSettings(Machine& machine);

    std::string layout, variant, model;  // in the words of X
    std::string consoleKeymap, consoleFont;
};
