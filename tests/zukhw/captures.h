#pragma once

#include <string>
#include <vector>

#include "scanners/zukhw/machine.h"
#include "tests/support/temporary_folder.h"

// Machines captured elsewhere, for tests that run where they are: below $ZUK_MACHINES, or else in
// shared/machines beside the source tree. They are not ours to copy into it.

// The folder that they are in; empty when there is none.
std::string capturesFolder();

// Skips the test, with a line that says why, where there are none.
#define SKIP_WITHOUT_CAPTURES() \
    if (capturesFolder().empty()) GTEST_SKIP() << "no captured machines: set ZUK_MACHINES to their folder"

// The captures in a folder below it, in order: of "lscpu" "lscpu/armv7" and so on.
std::vector<std::string> captureNames(const std::string& folder);

// What stands in a file below the folder.
std::string captureText(const std::string& file);

// One of them, unpacked.
class Capture {
  public:
    // name: its path below the folder without ".tar.xz". Throws std::runtime_error when it cannot be
    // unpacked.
    explicit Capture(const std::string& name);

    const std::string& root() const { return root_; }
    Machine machine(const std::string& cpuidSignature = "") const;

  private:
    TemporaryFolder folder_;
    std::string root_;
};

// The document that the built scanner writes of such a machine for one group, by its configuration name.
std::string scanCapture(const Capture& capture, const std::string& group);
