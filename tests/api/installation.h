#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"

// zuk installed under a prefix of the test's own, and the ways to build against it.
class Installation {
  public:
    Installation() : prefix_(folder_.path() + "/prefix") {
        const ShellResult result = shell("cmake --install " ZUK_BINARY_DIR " --prefix " + prefix_);
        EXPECT_EQ(0, result.status) << result.err;
        // A program with a library that has sanitizers in it needs the same ones.
        folder_.script("cc", "exec " ZUK_C_COMPILER " " ZUK_SANITIZER_FLAGS " \"$@\"");
        folder_.script("c++", "exec " ZUK_CXX_COMPILER " " ZUK_SANITIZER_FLAGS " \"$@\"");
    }

    const std::string& prefix() const { return prefix_; }
    // A folder to build in.
    const TemporaryFolder& folder() const { return folder_; }

    // Runs shell commands in the folder, for one who has put the prefix on all search paths.
    ShellResult run(const std::string& commands) const {
        const std::string libraries = prefix_ + "/" ZUK_INSTALL_LIBDIR;
        return shell("cd " + folder_.path() + " && export PATH=$PWD:" + prefix_ +
                     "/bin:$PATH CC=cc CXX=c++ LD_LIBRARY_PATH=" + libraries + " PKG_CONFIG_PATH=" +
                     libraries + "/pkgconfig CMAKE_PREFIX_PATH=" + prefix_ + "\n" + commands);
    }

  private:
    TemporaryFolder folder_;
    std::string prefix_;
};
