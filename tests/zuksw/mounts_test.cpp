// What is mounted where: every file once, and no file system that was not asked for. Mounts are made in a
// namespace of the program's own, so nothing is left of them.

#include <unistd.h>

#include "tests/zuksw/judge.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class MountsTest : public ScanTest {
  protected:
    MountsTest() {
        usePrefix_ = false;
        file("/usr/x", "1");
    }

    // Makes the mounts that the commands say, in the tree as the current directory, before each scan.
    void mounted(const std::string& commands) {
        const std::string unshare = geteuid() == 0 ? "unshare -m" : "unshare -rm";
        script_ =
            work_.script("mounted", "cd " + ::quoted(tree_.path()) + " && " + commands + " && exec \"$@\"");
        before_ = unshare + " " + ::quoted(script_) + " ";
    }
    static bool canMount() {
        const std::string unshare = geteuid() == 0 ? "unshare -m" : "unshare -rm";
        return shell(unshare + " mount -t tmpfs none /mnt").status == 0;
    }
    // The paths of all files "x" below the tree, without the tree's own.
    std::string found(const Settings& settings = {}) {
        const std::string all =
            scan(signature("<File as=\"f\" name=\"x\"/><Set name=\"p\" value=\"${f.path}\"/>", {"p"}),
                 settings)
                .values("p");
        std::string shown;
        for (std::size_t at = 0; at < all.size();) {
            const std::size_t end = std::min(all.find(' ', at), all.size());
            shown += (shown.empty() ? "" : " ") +
                     all.substr(at + tree_.path().size(), end - at - tree_.path().size());
            at = end + 1;
        }
        return shown;
    }

    std::string script_;
};

TEST_F(MountsTest, WhatIsMountedTwiceIsFoundOnce) {
    if (!canMount()) GTEST_SKIP() << "mounting is not allowed here";
    directory("/again");
    mounted("mount --bind usr again");
    EXPECT_EQ("/usr/x", found());
}

TEST_F(MountsTest, WhatIsSeenOnlyThroughABindMountIsFoundThere) {
    if (!canMount()) GTEST_SKIP() << "mounting is not allowed here";
    directory("/again");
    mounted("mount --bind usr again");
    EXPECT_EQ("/again/x", found({{"search/Exclude", tree_.path() + "/usr"}}));
}

TEST_F(MountsTest, ATreeInsideItselfEnds) {
    if (!canMount()) GTEST_SKIP() << "mounting is not allowed here";
    directory("/usr/inner");
    mounted("mount --rbind . usr/inner");
    EXPECT_EQ("/usr/x", found());
}

TEST_F(MountsTest, FileSystemsInMemoryAreEnteredOnlyWhenAskedFor) {
    if (!canMount()) GTEST_SKIP() << "mounting is not allowed here";
    directory("/memory");
    mounted("mount -t tmpfs none memory && touch memory/x");
    EXPECT_EQ("/usr/x", found());
    EXPECT_EQ("/memory/x /usr/x", found({{"search/FileSystems", "all"}}));
    EXPECT_EQ("/memory/x /usr/x", found({{"search/FileSystems", "local,tmpfs"}}));
    EXPECT_EQ("/memory/x /usr/x", found({{"search/FileSystems", "local, tmpfs"}}));
}

TEST_F(MountsTest, AFullDiskIsFive) {
    if (!canMount()) GTEST_SKIP() << "mounting is not allowed here";
    for (int i = 0; i < 200; ++i) file("/d/f" + std::to_string(i), "");
    directory("/disk");
    mounted("mount -t tmpfs -o size=4k none disk");
    const std::string configuration = configurationFile();
    const std::string signatures =
        signatureFile(signature("<File as=\"f\" name=\"f*\"/><Set name=\"p\" value=\"${f.path}\"/>", {"p"}));
    const ShellResult result = shell(before_ + program() + " -c " + ::quoted(configuration) + " -o " +
                                     ::quoted(tree_.path() + "/disk/o") + " -e " +
                                     ::quoted(work_.path() + "/e") + " -i " + ::quoted(signatures));
    EXPECT_EQ(5, result.status) << result.out;
    EXPECT_NE(std::string::npos, result.out.find("disk/o")) << result.out;
}

}  // namespace
