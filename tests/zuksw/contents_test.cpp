#include "scanners/zuksw/files/contents.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <numeric>
#include <string>
#include <vector>

#include "scanners/zuksw/files/open_files.h"
#include "tests/support/temporary_folder.h"

namespace {

using zuksw::Contents;
using zuksw::OpenFiles;

constexpr std::size_t kSize = std::size_t{4} << 20U;

class ContentsTest : public ::testing::Test {
  protected:
    FileDescriptor open() const { return FileDescriptor(::open(path_.c_str(), O_RDONLY | O_CLOEXEC)); }

    // How much of the file is in the machine's memory.
    std::size_t residentPages() const {
        const FileDescriptor fd = open();
        void* map = ::mmap(nullptr, kSize, PROT_READ, MAP_PRIVATE, fd.get(), 0);
        std::vector<unsigned char> pages(kSize / static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)));
        EXPECT_EQ(0, ::mincore(map, kSize, pages.data()));
        ::munmap(map, kSize);
        return std::accumulate(pages.begin(), pages.end(), std::size_t{0},
                               [](std::size_t sum, unsigned char page) { return sum + (page & 1U); });
    }

    // False where the file system lives in memory.
    bool dropPages() const {
        const FileDescriptor fd = open();
        ::fsync(fd.get());
        ::posix_fadvise(fd.get(), 0, 0, POSIX_FADV_DONTNEED);
        return residentPages() == 0;
    }

    void readAll() const {
        const std::shared_ptr<Contents> contents = Contents::ofFile(open(), kSize);
        const Contents::Reading reading(*contents, {0, kSize});
        EXPECT_EQ(std::string::npos, contents->bytes().find('y'));
    }

    TemporaryFolder folder_;
    std::string path_ = folder_.file("f", std::string(kSize, 'x'));
};

TEST_F(ContentsTest, PutBackWhatTheyBroughtIntoMemory) {
    if (!dropPages()) GTEST_SKIP() << "files here are always in memory";
    readAll();
    EXPECT_EQ(0U, residentPages());
}

TEST_F(ContentsTest, LeaveWhatWasInMemoryBefore) {
    ::fsync(open().get());  // what is not yet written stays anyway
    const std::size_t before = residentPages();
    readAll();
    EXPECT_EQ(before, residentPages());
}

class OpenFilesTest : public ::testing::Test {
  protected:
    OpenFiles::File get(const std::string& path) {
        return files_.get(path, [this] {
            ++opened_;
            return Contents::ofMemory("x");
        });
    }

    OpenFiles files_;
    int opened_ = 0;
};

TEST_F(OpenFilesTest, OpensAFileOnce) {
    EXPECT_EQ(get("/a"), get("/a"));
    EXPECT_EQ(1, opened_);
}

TEST_F(OpenFilesTest, ClosesTheOneThatWasUsedLongestAgo) {
    const std::weak_ptr<const Contents> first = get("/first");
    const std::weak_ptr<const Contents> second = get("/second");
    get("/first");
    while (!second.expired() && opened_ < 10'000) get("/" + std::to_string(opened_));
    EXPECT_FALSE(first.expired());
    EXPECT_TRUE(second.expired());
}

TEST_F(OpenFilesTest, TriesAgainWhatCouldNotBeOpened) {
    EXPECT_EQ(nullptr, files_.get("/a", [] { return OpenFiles::File(); }));
    EXPECT_NE(nullptr, get("/a"));
}

}  // namespace
