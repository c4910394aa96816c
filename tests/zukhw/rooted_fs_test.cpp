#include "scanners/shared/rooted_fs.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "tests/support/temporary_folder.h"
#include "tests/zukhw/machine_tree.h"

namespace {

constexpr std::size_t kLimit = 64 * 1024;

// Every test runs with the kernel's confinement and with our own.
class Rooted : public testing::TestWithParam<RootedFs::Resolver> {
  protected:
    Rooted() { folder.file("outside", "secret"); }

    RootedFs plant(std::string_view tree) {
        mkdir((folder.path() + "/root").c_str(), 0755);
        plantMachine(tree, folder.path() + "/root");
        return *RootedFs::below(folder.path() + "/root", GetParam());
    }

    TemporaryFolder folder;
    std::string data;
};

INSTANTIATE_TEST_SUITE_P(Resolvers, Rooted,
                         testing::Values(RootedFs::Resolver::Kernel, RootedFs::Resolver::Own),
                         [](const auto& row) {
                             return row.param == RootedFs::Resolver::Kernel ? "Kernel" : "Own";
                         });

TEST_P(Rooted, FollowsLinksInsideTheRoot) {
    const RootedFs fs = plant(
        "etc/real: yes\n"
        "etc/absolute -> /etc/real\n"
        "etc/relative -> real\n"
        "etc/above -> ../../../../etc/real\n"
        "etc/folder -> /etc\n"
        "etc/chain -> folder/folder/absolute\n");
    for (const char* path : {"etc/real", "/etc/real", "etc/absolute", "etc/relative", "etc/above",
                             "etc/chain", "etc/folder/../etc/relative", "../../etc/real"}) {
        EXPECT_EQ(ReadStatus::Ok, fs.read(path, &data, kLimit)) << path;
        EXPECT_EQ("yes\n", data) << path;
    }
}

TEST_P(Rooted, NeverLeavesTheRoot) {
    const RootedFs fs = plant("escape -> ../outside\n");
    for (const std::string& path :
         {std::string("escape"), std::string("../outside"), folder.path() + "/outside"}) {
        EXPECT_EQ(ReadStatus::Missing, fs.read(path, &data, kLimit)) << path;
        EXPECT_EQ("", data) << path;
    }
}

TEST_P(Rooted, GivesUpOnCircles) {
    const RootedFs fs = plant("a -> b\nb -> a\nself -> self\n");
    EXPECT_EQ(ReadStatus::Missing, fs.read("a", &data, kLimit));
    EXPECT_EQ(ReadStatus::Missing, fs.read("self/x", &data, kLimit));
    EXPECT_EQ(std::nullopt, fs.resolve("a"));
    EXPECT_FALSE(fs.exists("a"));
}

TEST_P(Rooted, RefusesFilesAboveTheLimit) {
    const RootedFs fs = plant("ten: 123456789\n");
    EXPECT_EQ(ReadStatus::Unusable, fs.read("ten", &data, 9));
    EXPECT_EQ("", data);
    EXPECT_EQ(ReadStatus::Ok, fs.read("ten", &data, 10));
}

TEST_P(Rooted, ReadsFilesOfEverySizeWhole) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{4095}, std::size_t{4096}, std::size_t{4097},
                                   std::size_t{69632}, std::size_t{300000}}) {
        const std::string content(size, 'x');
        const RootedFs fs = plant("dir/\n");
        folder.file("root/file", content);
        EXPECT_EQ(ReadStatus::Ok, fs.read("file", &data, 1000000));
        EXPECT_EQ(content, data) << size;
    }
}

TEST_P(Rooted, OpensNeitherPipesNorFolders) {
    const RootedFs fs = plant("folder/\n");
    ASSERT_EQ(0, mkfifo((folder.path() + "/root/pipe").c_str(), 0600));
    for (const char* path : {"pipe", "folder"}) {
        EXPECT_EQ(ReadStatus::Unusable, fs.read(path, &data, kLimit)) << path;
    }
}

TEST_P(Rooted, TellsLinksTargetsAsTheyStand) {
    const RootedFs fs = plant("sys/class/net/eth0 -> ../../devices/x/net/eth0\nfile: x\n");
    EXPECT_EQ(ReadStatus::Ok, fs.readLink("sys/class/net/eth0", &data));
    EXPECT_EQ("../../devices/x/net/eth0", data);
    EXPECT_NE(ReadStatus::Ok, fs.readLink("file", &data));
    EXPECT_EQ(ReadStatus::Missing, fs.readLink("none", &data));
}

TEST_P(Rooted, ResolvesToThePathWithoutLinks) {
    const RootedFs fs = plant(
        "sys/devices/pci/net/eth0/mtu: 1500\n"
        "sys/class/net/eth0 -> ../../devices/pci/net/eth0\n"
        "sys/devices/pci/net/eth0/device -> ../..\n");
    EXPECT_EQ("sys/devices/pci/net/eth0", fs.resolve("sys/class/net/eth0"));
    EXPECT_EQ("sys/devices/pci", fs.resolve("sys/class/net/eth0/device"));
    EXPECT_EQ(std::nullopt, fs.resolve("sys/class/net/eth1"));
}

TEST_P(Rooted, ListsAFolder) {
    const RootedFs fs = plant("dir/b: 1\ndir/a: 2\ndir/.hidden: 3\n");
    std::vector<std::string> names;
    EXPECT_EQ(ReadStatus::Ok, fs.list("dir", &names));
    std::sort(names.begin(), names.end());
    EXPECT_EQ((std::vector<std::string>{".hidden", "a", "b"}), names);
    EXPECT_EQ(ReadStatus::Missing, fs.list("none", &names));
    EXPECT_EQ(ReadStatus::Missing, fs.list("dir/a", &names));
}

TEST_P(Rooted, TellsWhichEntriesOfAFolderMayBeLinks) {
    const RootedFs fs = plant("dir/file: 1\ndir/link -> file\ndir/broken -> none\ndir/folder/\n");
    std::vector<std::string> names;
    std::vector<std::string> links;
    EXPECT_EQ(ReadStatus::Ok, fs.list("dir", &names, &links));
    EXPECT_EQ(4U, names.size());
    for (const char* link : {"link", "broken"})
        EXPECT_EQ(1, std::count(links.begin(), links.end(), link)) << link;
}

TEST_P(Rooted, TellsFacts) {
    const RootedFs fs = plant("file: 12345\nlink -> file\n");
    EXPECT_EQ(FileFacts::Type::Regular, fs.facts("link")->type);
    EXPECT_EQ(6U, fs.facts("link")->size);
    EXPECT_EQ(FileFacts::Type::Link, fs.facts("link", false)->type);
    EXPECT_FALSE(fs.facts("none").has_value());
}

TEST_P(Rooted, ReadsTheHeadOfALongFile) {
    const RootedFs fs = plant("file: 0123456789\n");
    EXPECT_EQ(ReadStatus::Ok, fs.readHead("file", &data, 4));
    EXPECT_EQ("0123", data);
    EXPECT_EQ(ReadStatus::Ok, fs.readHead("file", &data, 100));
    EXPECT_EQ("0123456789\n", data);
}

TEST(RootedFs, RefusesARootThatIsNoFolder) {
    const TemporaryFolder folder;
    EXPECT_FALSE(RootedFs::below(folder.file("file", "")).has_value());
    EXPECT_FALSE(RootedFs::below(folder.path() + "/none").has_value());
}

// Unlike the rest, /proc gives fewer bytes at once than there are.
TEST(RootedFs, ReadsLongFilesOfTheLiveMachineToTheirEnd) {
    std::ifstream file("/proc/kallsyms");
    const std::string expected((std::istreambuf_iterator<char>(file)), {});
    std::string data;
    ASSERT_EQ(ReadStatus::Ok,
              RootedFs::ofLiveMachine().read("proc/kallsyms", &data, std::size_t{64} * 1024 * 1024));
    EXPECT_TRUE(expected == data);  // too long to be shown
}

TEST(RootedFs, ReadsTheLiveMachine) {
    const RootedFs fs = RootedFs::ofLiveMachine();
    std::string data;
    EXPECT_TRUE(fs.live());
    EXPECT_EQ(ReadStatus::Ok, fs.read("proc/self/mountinfo", &data, std::size_t{64} * 1024 * 1024));
    EXPECT_NE("", data);
}

TEST(RootedFs, ResolvesTheKernelsLinksAsTheSystemDoes) {
    const RootedFs fs = RootedFs::ofLiveMachine();
    if (fs.resolve("sys/class/net/lo").value_or("").empty()) GTEST_SKIP() << "no sysfs here";
    for (const char* directory :
         {"sys/class/net", "sys/class/block", "sys/class/tty", "sys/bus/pci/devices"}) {
        std::vector<std::string> names;
        fs.list(directory, &names);
        for (const std::string& name : names) {
            for (const std::string& path : {std::string(directory) + '/' + name,
                                            std::string(directory) + '/' + name + "/device/subsystem"}) {
                std::error_code missing;
                const std::string place = std::filesystem::canonical('/' + path, missing).string();
                EXPECT_EQ(missing ? "" : place.substr(1), fs.resolve(path).value_or("")) << path;
            }
        }
    }
}

TEST(RootedFs, ListsTheKernelsDirectoriesWhole) {
    const RootedFs fs = RootedFs::ofLiveMachine();
    for (const std::string directory :
         {"sys/class", "sys/class/tty", "sys/devices/system/cpu", "proc/sys/vm"}) {
        std::set<std::string> expected;
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator('/' + directory, missing))
            expected.insert(entry.path().filename().string());
        std::vector<std::string> names;
        fs.list(directory, &names);
        EXPECT_EQ(expected, std::set<std::string>(names.begin(), names.end())) << directory;
    }
}

// Listing a directory, or staying in it, only changes from where the system looks paths up.
TEST(RootedFs, FindsTheSameFilesWhereverItStays) {
    const TemporaryFolder folder;
    folder.file("file", "content");
    const std::string place = folder.path().substr(1);
    const RootedFs fs = RootedFs::ofLiveMachine();
    std::vector<std::string> names;
    ASSERT_EQ(ReadStatus::Ok, fs.list(place, &names));
    EXPECT_EQ(std::vector<std::string>{"file"}, names);
    for (const std::string& near : {std::string("proc"), place, std::string("none/such"), std::string("/")}) {
        fs.stayIn(near);
        std::string text;
        EXPECT_EQ(ReadStatus::Ok, fs.read(place + "/file", &text, 100)) << near;
        EXPECT_EQ("content", text) << near;
        EXPECT_TRUE(fs.exists(place)) << near;
        EXPECT_TRUE(fs.exists(place + "/file")) << near;
        EXPECT_FALSE(fs.exists(place + "x/file")) << near;
        EXPECT_EQ(place + "/file", fs.resolve(place + "/file")) << near;
    }
}

// Whether others can change the directory decides how files in it are opened.
TEST(RootedFs, ReadsFilesAndLinksButNoPipesWhereverItStays) {
    const TemporaryFolder folder;
    plantMachine("file: content\nlink -> file\n", folder.path());
    ASSERT_EQ(0, mkfifo((folder.path() + "/pipe").c_str(), 0600));
    const std::string place = folder.path().substr(1);
    for (const mode_t mode : {0700U, 0777U}) {
        ASSERT_EQ(0, chmod(folder.path().c_str(), mode));
        const RootedFs fs = RootedFs::ofLiveMachine();
        fs.stayIn(place);
        std::string data;
        EXPECT_EQ(ReadStatus::Ok, fs.read(place + "/file", &data, kLimit)) << mode;
        EXPECT_EQ(ReadStatus::Ok, fs.read(place + "/link", &data, kLimit)) << mode;
        EXPECT_EQ("content\n", data) << mode;
        EXPECT_EQ(ReadStatus::Unusable, fs.read(place + "/pipe", &data, kLimit)) << mode;
        EXPECT_EQ(ReadStatus::Missing, fs.read(place + "/none", &data, kLimit)) << mode;
    }
}

TEST(RootedFs, OpensNoDeviceNode) {
    const RootedFs fs = RootedFs::ofLiveMachine();
    std::string data;
    EXPECT_EQ(ReadStatus::Unusable, fs.read("dev/null", &data, kLimit));
    fs.stayIn("dev");
    EXPECT_EQ(ReadStatus::Unusable, fs.read("dev/null", &data, kLimit));
}

}  // namespace
