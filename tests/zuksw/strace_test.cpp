// What the program asks of the kernel, as strace sees it.

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <regex>
#include <sstream>

#include "tests/support/files.h"
#include "tests/zuksw/archive_builder.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class StraceTest : public ScanTest {
  protected:
    StraceTest() {
        file("/usr/bin/tool", "\177ELF and more", 0755);
        file("/a.zip", packArchive(zipForm, {{"m", "1"}}));
        file("/var/lib/dpkg/status", "Package: p\nStatus: install ok installed\nVersion: 1\n\n");
        mkfifo(treePath("/special-fifo").c_str(), 0644);
        link("special-fifo", "/special-link");
        const int fd = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        treePath("/special-sock").copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
        EXPECT_EQ(0, bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address));
        close(fd);
    }

    // Signatures that use all there is to look at.
    static std::string everything() {
        return signature(
                   "<Any><File as=\"f\" name=\"*\" link=\"yes\" format=\"elf\"/>"
                   "<File as=\"f\" path=\"/special*\" link=\"yes\"/></Any>"
                   "<Content of=\"f\" match=\"more\"/><Test value=\"${f.sha256}${f.package:-}\" "
                   "match=\".\"/>") +
               signature("<File as=\"a\" name=\"*.zip\"/><Member of=\"a\" path=\"m\" as=\"m\"/>") +
               signature(
                   "<Package name=\"p\"/><Process name=\"*\"/><System key=\"os.id\" optional=\"yes\"/>") +
               signature("<Tag name=\"*\"/>") +
               signature("<Package name=\"*\" manager=\"pip,npm,gem,jar\"/>");
    }

    // The calls of one scan, one a line, everything up to the program's own start left out.
    std::vector<std::string> calls() {
        const std::string trace = work_.path() + "/trace";
        before_ = "ASAN_OPTIONS=detect_leaks=0 strace -f -qq -s 4096 -e trace=%process,%network,%file -o " +
                  quoted(trace) + " ";
        const ScanResult result = scan(everything(), {{"limits/Threads", "2"}});
        EXPECT_EQ(0, result.status) << result.messages;
        EXPECT_GE(result.matches.size(), 2U) << result.warnings;
        std::vector<std::string> lines;
        std::istringstream text(readFile(trace));
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }

    static bool canTrace() { return isInstalled("strace") && ask({"strace", "-qq", "true"}).status == 0; }
};

std::vector<std::string> matching(const std::vector<std::string>& lines, const char* pattern) {
    const std::regex regex(pattern);
    std::vector<std::string> found;
    for (const std::string& line : lines) {
        if (std::regex_search(line, regex)) found.push_back(line);
    }
    return found;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

TEST_F(StraceTest, StartsNothingAndTalksToNobody) {
    if (!canTrace()) GTEST_SKIP() << "strace is not installed or not allowed";
    const std::vector<std::string> lines = calls();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(1U, matching(lines, R"(\bexecve(at)?\()").size());  // its own
    EXPECT_EQ("", joined(matching(lines, R"(\b(v?fork|socket|socketpair|connect|bind|listen|send\w*)\()")));
    for (const std::string& thread : matching(lines, R"(\bclone3?\()")) {
        EXPECT_NE(std::string::npos, thread.find("CLONE_THREAD")) << thread;
    }
}

TEST_F(StraceTest, OpensNothingSpecial) {
    if (!canTrace()) GTEST_SKIP() << "strace is not installed or not allowed";
    const std::vector<std::string> special = matching(calls(), R"(\bopen\w*\(.*special-)");
    for (const std::string& line : special) EXPECT_NE(std::string::npos, line.find("O_PATH")) << line;
}

TEST_F(StraceTest, WritesItsTwoFilesOnly) {
    if (!canTrace()) GTEST_SKIP() << "strace is not installed or not allowed";
    const std::vector<std::string> lines = calls();
    const std::vector<std::string> written = matching(lines, R"(O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND)");
    EXPECT_EQ(2U, written.size()) << joined(written);
    EXPECT_EQ(1U, matching(written, "/output.xml").size());
    EXPECT_EQ(1U, matching(written, "/warnings.xml").size());
    EXPECT_EQ("",
              joined(matching(
                  lines, R"(\b(unlink|rename|mkdir|rmdir|link|symlink|chmod|chown|truncate|mknod)\w*\()")));
}

}  // namespace
