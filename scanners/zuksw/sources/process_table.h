#pragma once

#include <sys/types.h>

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

/** The processes that ran when they were taken. Any thread may ask. */
class ProcessTable {
  public:
    ProcessTable(const FileTree& tree, const Configuration& configuration)
        : tree_(tree), enabled_(configuration.processes.enabled) {}

    /** To be called before the sandbox is entered: inside, the kernel tells nobody another process's
     * executable. Takes none when processes are not to be looked at. */
    void take();
    /** In order of their numbers. */
    const std::vector<std::shared_ptr<const ProcessObject>>& taken() const { return processes_; }
    /** True when the tree is not that of the running machine: then nothing can be said about processes. */
    bool isElsewhere() const { return !tree_.isWholeMachine(); }

  private:
    const FileTree& tree_;
    bool enabled_;
    std::vector<std::shared_ptr<const ProcessObject>> processes_;
};

}  // namespace zuksw
