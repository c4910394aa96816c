#pragma once

#include <memory>
#include <vector>

#include "cli/inventory.h"
#include "cli/library.h"

struct ReleaseHardwareScan {
    void operator()(ZUKHwCtx* context) const { ZUK_hw_free(context); }
};

// One hardware scan. The library must outlive it.
class HardwareScan {
  public:
    explicit HardwareScan(const Library& library);

    // Every group there is, by its number, without instances.
    std::vector<Group> groups() const;
    void enable(const Group& group);
    // Throws Failure with the remedy.
    void run();
    // Fills in what the last run found.
    void read(Group& group) const;

  private:
    const Library& library_;
    std::unique_ptr<ZUKHwCtx, ReleaseHardwareScan> context_;
};
