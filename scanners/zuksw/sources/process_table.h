#pragma once

#include <sys/types.h>

#include <mutex>
#include <string>
#include <vector>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/files/file_tree.h"
#include "scanners/zuksw/setup/configuration.h"

namespace zuksw {

/** One running process. */
class ProcessObject : public Object {
  public:
    Text property(std::string_view name, Machine& machine) const override;
    std::string identity() const override { return pid; }

    std::string pid;
    std::string name;      // as the kernel calls it, at most 15 bytes
    std::string exe;       // path of the executable; empty when it is gone, unknown or a kernel thread
    bool exeKnown = true;  // false: this user may not see it
    dev_t device = 0;      // of the executable
    ino_t inode = 0;
    std::string arguments;  // separated by blanks
    std::string uid;
};

/** The processes at the time of the first question. Any thread may ask. */
class ProcessTable {
  public:
    ProcessTable(const FileTree& tree, const Configuration& configuration)
        : tree_(tree), enabled_(configuration.processes.enabled) {}

    /** In order of their numbers. Empty when processes are not to be looked at. */
    const std::vector<std::shared_ptr<const ProcessObject>>& all();
    /** True when the tree is not that of the running machine: then nothing can be said about processes. */
    bool isElsewhere() const { return !tree_.isWholeMachine(); }

  private:
    void read();

    const FileTree& tree_;
    bool enabled_;
    std::once_flag once_;
    std::vector<std::shared_ptr<const ProcessObject>> processes_;
};

}  // namespace zuksw
