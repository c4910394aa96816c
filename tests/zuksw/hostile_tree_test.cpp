// Trees that are made to hurt: what they are and what changes in them while they are searched.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <thread>

#include "tests/support/sanitized.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

// Does something again and again, in a thread of its own, while the test goes on.
class Meanwhile {
  public:
    template <typename Action>
    explicit Meanwhile(Action action)
        : thread_([this, action]() mutable {
              while (!over_) action();
          }) {}
    ~Meanwhile() {
        over_ = true;
        thread_.join();
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

  private:
    std::atomic<bool> over_{false};
    std::thread thread_;
};

// A chain of directories that is longer than a path may be; taken down link by link, since what removes
// trees would keep a descriptor for each level.
class DeepTree {
  public:
    DeepTree(const std::string& top, int levels) : levels_(levels) {
        top_ = open(top.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        bottom_ = dup(top_);
        for (int i = 0; i < levels && bottom_ >= 0; ++i) {
            mkdirat(bottom_, "d", 0755);
            step("d");
        }
    }
    ~DeepTree() {
        unlinkat(bottom_, "deep", 0);
        for (int i = 0; i < levels_ && bottom_ >= 0; ++i) {
            step("..");
            unlinkat(bottom_, "d", AT_REMOVEDIR);
        }
        close(bottom_);
        close(top_);
    }
    DeepTree(const DeepTree&) = delete;
    DeepTree& operator=(const DeepTree&) = delete;

    bool isComplete() const { return bottom_ >= 0; }
    void fileAtTheBottom() const { close(openat(bottom_, "deep", O_CREAT | O_WRONLY | O_CLOEXEC, 0644)); }

  private:
    void step(const char* name) {
        const int next = openat(bottom_, name, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(bottom_);
        bottom_ = next;
    }

    int levels_;
    int top_ = -1;
    int bottom_ = -1;
};

class HostileTreeTest : public ScanTest {};

TEST_F(HostileTreeTest, ADeviceIsNoFileWhateverItsName) {
    if (mknod(treePath("/nginx").c_str(), S_IFCHR | 0666, makedev(1, 5)) != 0) {
        GTEST_SKIP() << "devices cannot be made here";
    }
    link("nginx", "/link");
    EXPECT_EQ("no", truth("<File name=\"nginx\"/>"));
    EXPECT_EQ("no", truth("<File path=\"/nginx\"/>"));
    EXPECT_EQ("no", truth("<File name=\"link\" link=\"yes\"/>"));
}

TEST_F(HostileTreeTest, FiveThousandLevelsAreFoundWhenAllowed) {
    const DeepTree deep(treePath("/"), kSanitized ? 1000 : 5000);
    ASSERT_TRUE(deep.isComplete());
    deep.fileAtTheBottom();
    EXPECT_EQ("unknown", truth("<File name=\"deep\"/>"));
    EXPECT_EQ("yes", truth("<File name=\"deep\" maxSize=\"0\"/>", {{"search/MaxDepth", "5000"}}));
}

TEST_F(HostileTreeTest, ADirectoryOfManyEntriesIsReadToItsEnd) {
    constexpr int kEntries = 4000;  // with such names, several blocks of what the kernel hands out at once
    const std::string name(200, 'n');
    directory("/d");
    const int folder = open(treePath("/d").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < kEntries; ++i) {
        close(openat(folder, (name + std::to_string(i)).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
    }
    close(folder);
    const ScanResult result = scan(signature("<File name=\"*\" min=\"4000\" max=\"4000\"/>"),
                                   {{"limits/MaxRows", std::to_string(kEntries)}});
    EXPECT_EQ(1U, result.matches.size()) << result.warnings;
    EXPECT_NE(std::string::npos, result.messages.find("entries=4001 ")) << result.messages;
}

TEST_F(HostileTreeTest, DirectoriesThatVanishAreAbsentNotUnreadable) {
    for (int i = 0; i < 200; ++i) directory("/stay/" + std::to_string(i));
    file("/stay/here", "1");
    int round = 0;
    const Meanwhile coming([this, round]() mutable {
        const std::string path = treePath("/come" + std::to_string(round++ % 50));
        std::filesystem::create_directories(path + "/and/go");
        std::filesystem::remove_all(path);
    });
    for (int i = 0; i < 5; ++i) {
        const ScanResult result = scan(signature("<File name=\"here\"/><Not><File name=\"gone\"/></Not>"));
        EXPECT_EQ(0, result.status) << result.messages;
        EXPECT_EQ(1U, result.matches.size()) << result.warnings;
        EXPECT_FALSE(result.has("unreadable")) << result.warnings;
    }
}

TEST_F(HostileTreeTest, AFileThatIsCutWhileItIsReadEndsNothing) {
    constexpr off_t kSize = off_t{32} << 20U;
    file("/f", std::string(kSize, '.'));
    file("/g", "v1");
    const std::string path = treePath("/f");
    const Meanwhile cutting([path] {
        truncate(path.c_str(), 0);
        const int fd = open(path.c_str(), O_WRONLY | O_CLOEXEC);
        posix_fallocate(fd, 0, kSize);
        close(fd);
    });
    const std::string find = "<File as=\"f\" name=\"[fg]\"/><Content of=\"f\" match=\"v1\"/>";
    for (int i = 0; i < 5; ++i) {
        const ScanResult result = scan(signature(find));
        EXPECT_EQ(0, result.status) << result.messages;
        EXPECT_EQ(1U, result.matches.size()) << result.warnings;
    }
}

TEST_F(HostileTreeTest, OneUnreadablePlaceLosesNothingFoundElsewhere) {
    file("/open/x", "v1");
    file("/closed/x", "v1");
    file("/unread/x", "v1", 0);
    ASSERT_EQ(0, chmod(treePath("/closed").c_str(), 0));
    const ScanResult result =
        scan(signature("<File as=\"f\" name=\"x\"/><Content of=\"f\" match=\"v1\"/>"
                       "<Set name=\"p\" value=\"${f.path}\"/>",
                       {"p"}));
    ASSERT_EQ(0, chmod(treePath("/closed").c_str(), 0755));
    EXPECT_EQ(geteuid() == 0 ? "/closed/x /open/x /unread/x" : "/open/x", result.values("p"));
    EXPECT_EQ(geteuid() != 0, result.has("unreadable")) << result.warnings;
}

TEST_F(HostileTreeTest, ADirectoryHasNoContent) {
    directory("/d");
    link("/d", "/l");
    for (const char* type : {"directory", "symlink"}) {
        const std::string open = "<File as=\"f\" path=\"/?\" type=\"" + std::string(type) + "\"/>";
        EXPECT_EQ("no", truth(open + "<Content of=\"f\" match=\"x\"/>")) << type;
        EXPECT_EQ("no", truth(open + "<Elf of=\"f\" kind=\"program\"/>")) << type;
        EXPECT_EQ("no", truth(open + "<Test value=\"${f.sha256}\" match=\".\"/>")) << type;
    }
}

}  // namespace
