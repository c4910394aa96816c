#include "tests/support/run_command.h"

#include <stdexcept>

std::string readAll(Stream& stream) {
    std::string bytes;
    for (int byte = stream.read(); byte >= 0; byte = stream.read()) bytes.push_back(static_cast<char>(byte));
    return bytes;
}

// The check of the object's type opens a pipe, and one test leaves no descriptor free.
__attribute__((no_sanitize("vptr"))) std::unique_ptr<Process> start(const std::string& command) {
    const std::wstring wide(command.begin(), command.end());
    return std::unique_ptr<Process>(Runtime().execute(String(wide.c_str()), "PATH=/usr/bin:/bin\0\0\0"));
}

std::string outputOf(const std::string& command) {
    const std::unique_ptr<Process> process = start(command);
    if (!process) throw std::runtime_error("cannot start " + command);
    return readAll(*process->standardOutput());
}

int statusOf(const std::string& command) {
    const std::unique_ptr<Process> process = start(command);
    if (!process) return -1;
    readAll(*process->standardOutput());
    return process->exitStatus();
}
