#pragma once

#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

// The folder with captured machines, which is no part of the repository: what the environment variable
// ZUK_CAPTURED_MACHINES names, else shared/machines beside the repository; empty when there is none.
std::string capturedMachines();

// The names of the captures (NAME.tar.xz) in a folder below it, in order.
std::vector<std::string> captureNames(const std::string& folder);

// A capture, unpacked for one test.
class CapturedMachine {
  public:
    // Throws std::runtime_error when it cannot be unpacked.
    CapturedMachine(const std::string& folder, const std::string& name);

    std::string root() const { return unpacked_.path() + "/" + name_; }

  private:
    TemporaryFolder unpacked_;
    std::string name_;
};
