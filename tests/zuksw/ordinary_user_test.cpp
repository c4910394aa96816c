// The program as a user who may not read everything.

#include <sys/stat.h>
#include <unistd.h>

#include <map>

#include "tests/zuksw/scan_fixture.h"

namespace {

// Runs the program as nobody when the test is run by root, and as whoever runs the test otherwise.
class OrdinaryUserTest : public ScanTest {
  protected:
    OrdinaryUserTest() {
        if (geteuid() == 0) before_ = "setpriv --reuid 65534 --regid 65534 --clear-groups ";
        chmod(tree_.path().c_str(), 0755);
        chmod(work_.path().c_str(), 0777);
        for (int i = 0; i < 20; ++i) {
            const std::string at = std::to_string(i);
            file("/closed" + at + "/x", "v1");
            file("/open/x" + at, "v1", 0);
            file("/sbin/tool" + at, "\177ELF", 0111);
        }
        file("/open/x", "v1");
        file("/var/lib/dpkg/status", "Package: p\nStatus: install ok installed\nVersion: 1\n\n", 0600);
        const bool root = geteuid() == 0;  // whose files are closed to others by their mode alone
        setClosed(root ? 0700 : 0);
        if (!root) chmod(treePath("/var/lib/dpkg/status").c_str(), 0);
    }
    ~OrdinaryUserTest() override { setClosed(0755); }

    void setClosed(mode_t mode) const {
        for (int i = 0; i < 20; ++i) chmod(treePath("/closed" + std::to_string(i)).c_str(), mode);
    }
    bool canRun() const { return shell(before_ + program() + " --version").status == 0; }
};

const char kAll[] =
    "<Any><All><File as=\"f\" name=\"x*\"/><Content of=\"f\" match=\"v1\"/></All>"
    "<All><File as=\"f\" name=\"tool*\" format=\"elf\"/></All>"
    "<All><File as=\"f\" name=\"x\"/><Package name=\"p\"/></All></Any>";

TEST_F(OrdinaryUserTest, GetsOneEventForEachCause) {
    if (!canRun()) GTEST_SKIP() << "another user cannot start the program where it lies";
    const ScanResult result = scan(
        signature(kAll) + signature("<File as=\"f\" name=\"x\" sha256=\"" + std::string(64, '0') + "\"/>"));
    EXPECT_EQ(0, result.status) << result.messages;
    std::map<std::string, int> causes;
    for (const EventRow& event : result.events) ++causes[event.code + ": " + event.text];
    EXPECT_FALSE(causes.empty());
    for (const auto& [cause, count] : causes) EXPECT_EQ(1, count) << cause;
}

TEST_F(OrdinaryUserTest, KeepsWhatCouldBeDecided) {
    if (!canRun()) GTEST_SKIP() << "another user cannot start the program where it lies";
    EXPECT_EQ(
        "/open/x",
        scan(signature(std::string(kAll) + "<Set name=\"p\" value=\"${f.path}\"/>", {"p"})).values("p"));
}

TEST_F(OrdinaryUserTest, ARootThatIsClosedIsNotAbsent) {
    if (!canRun()) GTEST_SKIP() << "another user cannot start the program where it lies";
    for (const char* conditions : {"<File name=\"none\"/>", "<File path=\"/closed0/d/none\"/>"}) {
        EXPECT_EQ("unknown", truth(conditions, {{"search/Root", "/closed0/d"}})) << conditions;
        EXPECT_EQ("no", truth(conditions, {{"search/Root", "/open"}})) << conditions;
    }
}

TEST_F(OrdinaryUserTest, IsToldHowManyPlacesWereClosed) {
    if (!canRun()) GTEST_SKIP() << "another user cannot start the program where it lies";
    const ScanResult result = scan(signature("<File name=\"none\"/>"));
    ASSERT_TRUE(result.has("unreadable")) << result.warnings;
    for (const EventRow& event : result.events) {
        if (event.code != "unreadable") continue;
        EXPECT_EQ("20", event.count);
        EXPECT_EQ("/closed0", event.path);
    }
}

}  // namespace
