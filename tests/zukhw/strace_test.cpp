// What the scanner asks of the system: only to read, and of a copied machine nothing outside it.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "scanners/shared/affix.h"
#include "scanners/zukhw/collectors.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/machine_tree.h"
#include "tests/zukhw/scanner_run.h"
#include "tests/zukhw/system_calls.h"

namespace {

using Calls = std::vector<SystemCall>;

std::vector<std::string> allGroups() {
    std::vector<std::string> names;
    for (const Collector& collector : allCollectors()) names.emplace_back(collector.configName);
    return names;
}

// One scan of this machine, with every group, for all tests.
class LiveScan : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<TemporaryFolder>();
        const std::string config = folder->file("config.xml", configFor(allGroups()));
        calls = traceScanner({"-c", config, "-o", output()});
    }
    static void TearDownTestSuite() { folder.reset(); }

    static std::string output() { return folder->path() + "/out.xml"; }

    static inline std::unique_ptr<TemporaryFolder> folder;
    static inline std::optional<Calls> calls;
};

// The scanner's calls with one of these names.
Calls named(const Calls& calls, const std::set<std::string>& names) {
    Calls found;
    for (const SystemCall& call : calls) {
        if (names.count(call.name) != 0) found.push_back(call);
    }
    return found;
}

TEST_F(LiveScan, IsSeen) {
    SKIP_WITHOUT_TRACE(calls);
    const auto opensCpus = [](const SystemCall& call) { return call.opened() == "/proc/cpuinfo"; };
    EXPECT_EQ(1, std::count_if(calls->begin(), calls->end(), opensCpus));
}

TEST_F(LiveScan, FindsEachBlockDeviceOnce) {
    SKIP_WITHOUT_TRACE(calls);
    std::set<std::string> found;
    for (const SystemCall& call : named(*calls, {"readlinkat"})) {
        const std::string path = call.text();
        const bool isBlock = startsWith(path, "sys/class/block/");
        EXPECT_TRUE(!isBlock || found.insert(path).second) << path;
    }
    if (found.empty()) GTEST_SKIP() << "no block device here";
}

TEST_F(LiveScan, LooksIntoNoHomeThatThereIsNot) {
    SKIP_WITHOUT_TRACE(calls);
    const std::string missing = "nonexistent/";  // the home of users who have none, on many systems
    if (std::filesystem::exists('/' + missing)) GTEST_SKIP() << '/' << missing << " exists";
    for (const SystemCall& call : *calls) EXPECT_FALSE(startsWith(call.text(), missing)) << call.arguments;
}

TEST_F(LiveScan, StartsNoProcess) {
    SKIP_WITHOUT_TRACE(calls);
    const Calls started = named(*calls, {"execve", "execveat", "fork", "vfork", "clone", "clone3"});
    ASSERT_EQ(1U, started.size()) << started.back().name << '(' << started.back().arguments << ')';
    EXPECT_EQ("execve", started.front().name);  // by which the scanner itself began
}

TEST_F(LiveScan, OpensNoDevice) {
    SKIP_WITHOUT_TRACE(calls);
    for (const SystemCall& call : *calls) {
        const std::string opened = call.has("O_PATH") ? "" : call.opened();
        EXPECT_EQ(std::string::npos, opened.find("<char ")) << call.arguments;
        EXPECT_EQ(std::string::npos, opened.find("<block ")) << call.arguments;
    }
}

TEST_F(LiveScan, AsksNoDeviceButAdaptersForTheirDriver) {
    SKIP_WITHOUT_TRACE(calls);
    for (const SystemCall& call : named(*calls, {"ioctl"})) {
        EXPECT_TRUE(call.has("<UDP:") && call.has("SIOCETHTOOL")) << call.arguments;
    }
}

// Of sockets only those that load no module, and that send nothing to a network.
TEST_F(LiveScan, OpensHarmlessSocketsOnly) {
    SKIP_WITHOUT_TRACE(calls);
    for (const SystemCall& call : named(*calls, {"socket"})) {
        const bool routes = startsWith(call.arguments, "AF_NETLINK") && call.has("NETLINK_ROUTE");
        const bool local = startsWith(call.arguments, "AF_UNIX");
        EXPECT_TRUE(routes || local || startsWith(call.arguments, "AF_INET, SOCK_DGRAM")) << call.arguments;
    }
    for (const SystemCall& call :
         named(*calls, {"connect", "sendto", "sendmsg", "sendmmsg", "bind", "listen"})) {
        EXPECT_TRUE(call.has("<NETLINK:") || call.has("<UNIX")) << call.name << ' ' << call.arguments;
    }
}

TEST_F(LiveScan, WritesNothingButTheOutput) {
    SKIP_WITHOUT_TRACE(calls);
    for (const SystemCall& call : *calls) {
        const bool writes =
            call.has("O_WRONLY") || call.has("O_RDWR") || call.has("O_CREAT") || call.has("O_TRUNC");
        if (!writes) continue;
        EXPECT_EQ(output(), call.opened()) << call.arguments;
    }
    const Calls changes =
        named(*calls,
              {"mkdir",        "mkdirat",       "rmdir",     "unlink",   "unlinkat",  "rename", "renameat",
               "renameat2",    "link",          "linkat",    "symlink",  "symlinkat", "mknod",  "mknodat",
               "truncate",     "ftruncate",     "chmod",     "fchmod",   "fchmodat",  "chown",  "fchown",
               "lchown",       "fchownat",      "utimensat", "setxattr", "flock",     "mount",  "init_module",
               "finit_module", "delete_module", "kill",      "ptrace",   "reboot"});
    EXPECT_TRUE(changes.empty()) << changes.front().name << '(' << changes.front().arguments << ')';
}

// What a program may touch to start: its libraries and their list.
bool belongsToTheProgram(const std::string& path) {
    return startsWith(path, "/etc/ld.so.") || path.find("/lib") != std::string::npos;
}

const std::set<std::string> kLookUps = {"open",       "openat", "openat2", "stat",       "lstat",
                                        "newfstatat", "statx",  "access",  "faccessat2", "readlink",
                                        "readlinkat", "statfs", "execve",  "getxattr",   "chdir"};

TEST(CopiedMachine, IsReadAndNothingElse) {
    const TemporaryFolder folder;
    const std::string root = folder.path() + "/root";
    std::filesystem::create_directory(root);
    plantMachine(
        "proc/cpuinfo: processor : 0\n"
        "etc/os-release -> ../../../../../../../../../../etc/os-release\n"
        "etc/machine-id -> /etc/machine-id\n"
        "sys/class/net/eth0/address: 02:00:00:00:00:01\n"
        "sys/block/sda/size: 8\n",
        root);
    const std::string config = folder.file("config.xml", configFor(allGroups()));
    const std::string output = folder.path() + "/out.xml";
    const std::optional<Calls> calls = traceScanner({"-c", config, "-o", output, "--root", root});
    SKIP_WITHOUT_TRACE(calls);
    bool started = false;
    for (const SystemCall& call : *calls) {
        const std::string opened = call.opened();
        if (opened == config) started = true;
        if (opened == config || opened == output || opened == root) continue;
        if (!started) {
            EXPECT_TRUE(opened.empty() || belongsToTheProgram(opened)) << call.arguments;
            continue;
        }
        // A name that is looked up from anywhere but the root could lead out of it.
        const bool looksUp = kLookUps.count(call.name) != 0 && !call.text().empty();
        EXPECT_TRUE(!looksUp || call.has('<' + root) || startsWith(opened, root))
            << call.name << ' ' << call.arguments;
        EXPECT_TRUE(opened.empty() || startsWith(opened, root)) << call.name << ' ' << call.arguments;
    }
    EXPECT_TRUE(started);
}

TEST(CopiedMachine, LeavesTheRunningOneAlone) {
    const TemporaryFolder folder;
    const std::string config = folder.file("config.xml", configFor(allGroups()));
    const std::optional<Calls> calls =
        traceScanner({"-c", config, "-o", folder.path() + "/out.xml", "--root", folder.path()});
    SKIP_WITHOUT_TRACE(calls);
    const Calls asked = named(*calls, {"uname", "sysinfo", "statfs", "fstatfs", "socket", "ioctl",
                                       "getgroups", "sched_getaffinity", "getcpu", "times"});
    EXPECT_TRUE(asked.empty()) << asked.front().name << '(' << asked.front().arguments << ')';
}

}  // namespace
