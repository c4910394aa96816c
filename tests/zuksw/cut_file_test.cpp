// A file that is mapped, and what becomes of it in the meantime.

#include "scanners/zuksw/files/contents.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/support/forked_host.h"
#include "tests/support/temporary_folder.h"

namespace zuksw {
namespace {

std::shared_ptr<Contents> mapped(const std::string& path, std::uint64_t size) {
    return Contents::ofFile(FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)), size);
}

// The handler of faults belongs to the process, so it is put up in another one.
TEST(CutFile, AFileThatWasCutReadsAsZerosAndIsChanged) {
    const TemporaryFolder folder;
    const std::string path = folder.file("f", std::string(1 << 20, 'x'));
    const int status = inForkedHost([&] {
        installFaultHandler();
        const auto contents = mapped(path, 1 << 20);
        if (!contents || contents->bytes()[0] != 'x' || contents->changed()) return 1;
        if (truncate(path.c_str(), 0) != 0) return 2;
        std::size_t others = 0;
        for (const char c : contents->bytes()) others += c == '\0' ? 0 : 1;
        if (others != 0) return 3;
        return contents->changed() ? 0 : 4;
    });
    EXPECT_EQ(0, status);
}

TEST(CutFile, OnlyTheOneThatWasCutIsChanged) {
    const TemporaryFolder folder;
    const std::string cut = folder.file("cut", std::string(1 << 16, 'x'));
    const std::string whole = folder.file("whole", std::string(1 << 16, 'y'));
    const int status = inForkedHost([&] {
        installFaultHandler();
        const auto first = mapped(cut, 1 << 16);
        const auto second = mapped(whole, 1 << 16);
        if (truncate(cut.c_str(), 0) != 0) return 1;
        const bool zero = first->bytes().back() == '\0' && second->bytes().back() == 'y';
        return zero && first->changed() && !second->changed() ? 0 : 2;
    });
    EXPECT_EQ(0, status);
}

TEST(CutFile, HolesAreNoPartOfWhatIsStored) {
    const TemporaryFolder folder;
    const std::string path = folder.file("f", "");
    constexpr off_t kSize = off_t{64} << 20U;
    ASSERT_EQ(0, truncate(path.c_str(), kSize));
    const int fd = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(1, pwrite(fd, "x", 1, kSize / 2));
    close(fd);
    const auto contents = mapped(path, kSize);
    ASSERT_TRUE(contents);
    const std::vector<Range> stored = contents->stored({0, kSize});
    ASSERT_EQ(1U, stored.size());
    EXPECT_LE(stored[0].begin, static_cast<std::uint64_t>(kSize / 2));
    EXPECT_GT(stored[0].end, static_cast<std::uint64_t>(kSize / 2));
    EXPECT_LT(stored[0].end - stored[0].begin, std::uint64_t{1} << 20U);
}

}  // namespace
}  // namespace zuksw
