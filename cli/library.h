#pragma once

#include <zuk.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/inventory.h"

struct ReleaseLibrary {
    void operator()(ZUKCtx* context) const { ZUK_free(context); }
};
struct ReleaseHardwareScan {
    void operator()(ZUKHwCtx* context) const { ZUK_hw_free(context); }
};

// The library, opened for this program. Throws Failure when it cannot be.
class Library {
  public:
    // home: the directory of the scanners; none: the library looks for an installation.
    Library(std::optional<std::string> home, bool verbose);

    ZUKCtx* get() const { return context_.get(); }
    ZUK_log_callback logCallback() const { return log_; }
    // The directory of the scanners in words, for messages.
    std::string homeInWords() const;

  private:
    std::optional<std::string> home_;
    ZUK_log_callback log_;
    std::unique_ptr<ZUKCtx, ReleaseLibrary> context_;
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
