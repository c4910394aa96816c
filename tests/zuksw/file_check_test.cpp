#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>

#include "tests/zuksw/scan_fixture.h"

namespace {

class FileCheckTest : public ScanTest {
  protected:
    // The paths that a condition which binds f finds.
    std::string paths(const std::string& conditions, const Settings& settings = {}) {
        const ScanResult result =
            scan("<Signature guid=\"g\" name=\"n\" place=\"${f.path}\"><Detect>" + conditions +
                     "</Detect><Report><Variable name=\"path\" value=\"${f.path}\"/></Report>"
                     "</Signature>",
                 settings);
        EXPECT_EQ(0, result.status) << result.messages;
        return result.has("signature-invalid") ? result.textOf("signature-invalid") : result.values("path");
    }
    std::string find(const std::string& attributes, const Settings& settings = {}) {
        return paths("<File as=\"f\" " + attributes + "/>", settings);
    }
};

TEST_F(FileCheckTest, SelectsByNameAndPath) {
    for (const char* path : {"/a/x", "/a/b/x", "/a/b/y.so.1", "/c/x"}) file(path, "1");
    EXPECT_EQ("/a/b/x /a/x /c/x", find("name=\"x\""));
    EXPECT_EQ("/a/b/y.so.1", find("name=\"*.so.*\""));
    EXPECT_EQ("/a/b/y.so.1", find("nameMatch=\"y\\.so\\.\\d+\""));
    EXPECT_EQ("", find("nameMatch=\"y\""));  // the whole name
    EXPECT_EQ("/a/x", find("path=\"/a/x\""));
    EXPECT_EQ("/a/b/x", find("path=\"/a/*/x\""));
    EXPECT_EQ("/a/b/x /a/x", find("path=\"/a/**/x\""));
    EXPECT_EQ("/a/b/x /a/x /c/x", find("path=\"**/x\""));
    EXPECT_EQ("/a/b/x /a/x", find("name=\"x\" under=\"/a\""));
    EXPECT_EQ("/a/b/x", find("name=\"x\" path=\"/a/b/*\""));
    EXPECT_EQ("/a/x /c/x", find("path=\"/{a,c}/x\""));
}

TEST_F(FileCheckTest, LooksNearAnotherFile) {
    for (const char* path : {"/p/bin/tool", "/p/VERSION", "/p/lib/q/mod", "/r/bin/tool"}) file(path, "1");
    const std::string tool = "<File as=\"t\" name=\"tool\"/>";
    EXPECT_EQ("/p/VERSION", paths(tool + "<File near=\"t\" path=\"../VERSION\" as=\"f\"/>"));
    EXPECT_EQ("/p/lib/q/mod", paths(tool + "<File near=\"t\" path=\"../lib/*/m*\" as=\"f\"/>"));
    EXPECT_EQ("/p/lib/q/mod", paths(tool + "<File near=\"t\" path=\"../**/mod\" as=\"f\"/>"));
}

TEST_F(FileCheckTest, SelectsByWhatTheFileIs) {
    file("/e", "\177ELF....");
    file("/s", "#!/bin/sh\n", 0755);
    file("/z", "PK\003\004....");
    file("/n", "");
    directory("/d");
    link("e", "/l");
    EXPECT_EQ("/e", find("path=\"/?\" format=\"elf\""));
    EXPECT_EQ("/s", find("path=\"/?\" format=\"script\""));
    EXPECT_EQ("/z", find("path=\"/?\" format=\"zip\""));
    EXPECT_EQ("/s", find("path=\"/?\" executable=\"yes\""));
    EXPECT_EQ("/n", find("path=\"/?\" maxSize=\"0\""));
    EXPECT_EQ("/s", find("path=\"/?\" minSize=\"9\""));
    EXPECT_EQ("/d", find("path=\"/?\" type=\"directory\""));
    EXPECT_EQ("/l", find("path=\"/?\" type=\"symlink\""));
    EXPECT_EQ("/l", find("name=\"l\" type=\"symlink\" target=\"?\""));
    EXPECT_EQ("", find("name=\"l\" type=\"symlink\" target=\"/e\""));
    EXPECT_EQ(
        "/n",
        find("path=\"/?\" sha256=\"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855\""));
}

TEST_F(FileCheckTest, FollowsLinksOnlyWhereAsked) {
    file("/real/tool-1.2", "1");
    link("../real/tool-1.2", "/bin/tool");
    link("/real/tool-1.2", "/sbin/tool");
    link("/nowhere", "/lib/tool");
    EXPECT_EQ("", find("name=\"tool\""));
    EXPECT_EQ("/real/tool-1.2", find("name=\"tool\" link=\"yes\""));
    EXPECT_EQ("", find("name=\"tool\" link=\"yes\"", {{"search/Links", "none"}}));
    EXPECT_EQ("/real/tool-1.2", find("path=\"/sbin/tool\" link=\"yes\""));
}

TEST_F(FileCheckTest, TakesLinksInsideThePrefixOnly) {
    link("/etc/hostname", "/escape");
    link("../../../../../../../../../etc/hostname", "/climb");
    EXPECT_EQ("", find("path=\"/{escape,climb}\" link=\"yes\""));
}

TEST_F(FileCheckTest, ReportsHardLinksOnceByTheSmallestPath) {
    file("/b", "1");
    for (const char* other : {"/c", "/a"}) std::filesystem::create_hard_link(treePath("/b"), treePath(other));
    EXPECT_EQ("/a", find("name=\"[abc]\""));
    EXPECT_EQ("/b", find("name=\"b\""));
}

TEST_F(FileCheckTest, AHardLinkThatMayBeReadDecidesForOneThatMayNot) {
    file("/a/f", "\177ELF");
    directory("/b");
    std::filesystem::create_hard_link(treePath("/a/f"), treePath("/b/f"));
    const std::string condition = "<File name=\"f\" format=\"elf\"/>";
    EXPECT_EQ("yes", truth(condition, {{"content/Deny", "/a/f"}}));
    EXPECT_EQ("unknown", truth(condition, {{"content/Deny", "**/f"}}));
}

TEST_F(FileCheckTest, SurvivesLoopsOfLinks) {
    file("/d/x", "1");
    link("..", "/d/parent");
    link("self", "/d/self");
    for (int i = 0; i < 50; ++i) link("n" + std::to_string(i + 1), "/chain/n" + std::to_string(i));
    file("/chain/n50", "1");
    EXPECT_EQ("/d/x", find("name=\"x\""));
    EXPECT_EQ("", find("name=\"self\" link=\"yes\""));
    EXPECT_EQ("/chain/n50", find("name=\"n49\" link=\"yes\""));
    EXPECT_EQ("", find("name=\"n0\" link=\"yes\""));  // further than the kernel would follow
}

TEST_F(FileCheckTest, NeverTakesSpecialFiles) {
    ASSERT_EQ(0, mkfifo(treePath("/nginx").c_str(), 0644));
    link("nginx", "/link");
    const int fd = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    treePath("/sock").copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
    ASSERT_EQ(0, bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address));
    close(fd);
    EXPECT_EQ("", find("name=\"{nginx,sock}\" format=\"elf\""));
    EXPECT_EQ("", find("name=\"link\" link=\"yes\""));
    EXPECT_EQ("", find("path=\"/nginx\""));
}

TEST_F(FileCheckTest, ExcludesDirectoriesAndFiles) {
    for (const char* path : {"/a/x", "/a/.snapshots/1/x", "/var/lib/docker/o/x", "/b/x"}) file(path, "1");
    EXPECT_EQ("/a/x /b/x", find("name=\"x\""));
    EXPECT_EQ("/b/x", find("name=\"x\"", {{"search/Exclude", "/a"}}));
    EXPECT_EQ("/a/x", find("name=\"x\"", {{"search/Exclude", "/b/x"}}));
    EXPECT_EQ("/a/x /b/x /var/lib/docker/o/x", find("name=\"x\"", {{"search/Containers", "yes"}}));
    EXPECT_EQ("/a/.snapshots/1/x /a/x /b/x /var/lib/docker/o/x",
              find("name=\"x\"", {{"search/Exclude", "none"}}));
    EXPECT_EQ("", find("path=\"/a/.snapshots/1/x\""));
}

TEST_F(FileCheckTest, LinksDoNotLeadIntoWhatIsNotSearched) {
    file("/hidden/f", "1");
    link("hidden/f", "/a");
    const std::string condition = "<File name=\"a\" link=\"yes\"/>";
    EXPECT_EQ("yes", truth(condition));
    EXPECT_EQ("no", truth(condition, {{"search/Exclude", "/hidden"}}));
    usePrefix_ = false;
    link("/proc/version", "/b");
    EXPECT_EQ("no", truth("<File name=\"b\" link=\"yes\"/>"));
}

TEST_F(FileCheckTest, StaysInsideTheRoots) {
    for (const char* path : {"/a/x", "/b/x", "/b/c/x"}) file(path, "1");
    EXPECT_EQ("/b/c/x /b/x", find("name=\"x\"", {{"search/Root", "/b"}, {"search/Root", "/b/c"}}));
    EXPECT_EQ("", find("path=\"/a/x\"", {{"search/Root", "/b"}}));
    EXPECT_EQ("/b/c/x", find("path=\"/b/*/x\"", {{"search/Root", "/b/c"}}));
}

TEST_F(FileCheckTest, StopsAtMaxDepthAndSaysSo) {
    file("/1/2/x", "1");
    const Settings settings = {{"search/MaxDepth", "1"}};
    EXPECT_EQ("unknown", truth("<File name=\"x\"/>", settings));
    EXPECT_EQ("no",
              truth("<File name=\"x\"/>", {{"search/MaxDepth", "1"}, {"search/IncompleteIs", "absent"}}));
    EXPECT_EQ("not-searched", scan(signature("<File name=\"x\"/>"), settings).events.at(0).code);
    EXPECT_EQ("yes", truth("<File name=\"x\"/>", {{"search/MaxDepth", "2"}}));
}

TEST_F(FileCheckTest, AGapOutsideTheAreaOfAConditionDoesNotMatter) {
    file("/1/2/x", "1");
    const Settings settings = {{"search/MaxDepth", "1"}};
    EXPECT_EQ("no", truth("<File name=\"y\" under=\"/other\"/>", settings));
    EXPECT_EQ("no", truth("<File path=\"/other/**/y\"/>", settings));
    EXPECT_EQ("unknown", truth("<File path=\"/1/**/y\"/>", settings));
}

TEST_F(FileCheckTest, StopsAtMaxEntries) {
    for (int i = 0; i < 100; ++i) file("/d" + std::to_string(i) + "/x", "1");
    EXPECT_EQ("unknown", truth("<File name=\"none\"/>", {{"search/MaxEntries", "10"}}));
}

TEST_F(FileCheckTest, UnreadableDirectoryIsUnknownToAnOrdinaryUser) {
    file("/closed/x", "1");
    ASSERT_EQ(0, chmod(treePath("/closed").c_str(), 0));
    const bool root = geteuid() == 0;
    EXPECT_EQ(root ? "no" : "unknown", truth("<Not><File name=\"x\"/></Not>"));
    EXPECT_EQ(root ? "no" : "yes",
              truth("<Not><File name=\"x\"/></Not>", {{"search/IncompleteIs", "absent"}}));
    ASSERT_EQ(0, chmod(treePath("/closed").c_str(), 0755));
}

TEST_F(FileCheckTest, NamesMayHoldAnyBytes) {
    const std::string name = "l\nf\xFF";
    file("/" + name, "1");
    file("/" + std::string(255, 'n'), "1");
    const ScanResult result = scan(
        "<Signature guid=\"g\" name=\"n\" place=\"${f.path}\"><Detect><File as=\"f\" "
        "name=\"{l*,nnn*}\"/></Detect><Report><Variable name=\"p\" "
        "value=\"${f.name}\"/></Report></Signature>");
    EXPECT_NE(std::string::npos, result.output.find("value=\"l&#10;f\\xFF\"")) << result.output;
    EXPECT_EQ(2U, result.matches.size());
}

TEST_F(FileCheckTest, GoesAsDeepAsItIsTold) {
    // Deeper than the longest path that the kernel takes at once.
    std::filesystem::path at = treePath("/");
    ASSERT_EQ(0, chdir(at.c_str()));
    const std::string name(100, 'd');
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(0, mkdir(name.c_str(), 0755));
        ASSERT_EQ(0, chdir(name.c_str()));
    }
    FILE* file = fopen("deep", "w");
    ASSERT_NE(nullptr, file);
    ASSERT_EQ(0, fclose(file));
    EXPECT_EQ("unknown", truth("<File name=\"deep\"/>"));
    EXPECT_EQ("yes", truth("<File name=\"deep\" maxSize=\"10\"/>", {{"search/MaxDepth", "200"}}));
    for (int i = 0; i < 100; ++i) {
        unlink("deep");
        ASSERT_EQ(0, chdir(".."));
        ASSERT_EQ(0, rmdir(name.c_str()));
    }
    ASSERT_EQ(0, chdir("/"));
}

TEST_F(FileCheckTest, HandsOutProperties) {
    file("/d/libx.so.3", "abc", 0640);
    const std::string report =
        "<Variable name=\"p\" "
        "value=\"${f.dir}|${f.name}|${f.stem}|${f.ext}|${f.size}|${f.mode}|${f.link:-none}\"/>"
        "<Variable name=\"h\" value=\"${f.sha256}\"/>";
    const ScanResult result = scan(
        "<Signature guid=\"g\" name=\"n\"><Detect><File as=\"f\" name=\"libx*\"/></Detect>"
        "<Report>" +
        report + "</Report></Signature>");
    EXPECT_EQ("/d|libx.so.3|libx.so|3|3|0640|none", result.values("p"));
    EXPECT_EQ("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad", result.values("h"));
}

TEST_F(FileCheckTest, ReplacesReferencesInNamesAndPaths) {
    for (const char* path : {"/a/lib1.so", "/a/lib2.so", "/a/x[1]/y"}) file(path, "1");
    file("/v", "2");
    const std::string value = "<File path=\"/v\" as=\"v\"/><Content of=\"v\" match=\"(?P&lt;n&gt;\\d)\"/>";
    EXPECT_EQ("/a/lib2.so", paths(value + "<File as=\"f\" name=\"lib${n}.so\"/>"));
    EXPECT_EQ("/a/lib2.so", paths(value + "<File as=\"f\" path=\"/a/lib${n}.*\"/>"));
    EXPECT_EQ("/a/lib2.so", paths(value + "<File as=\"f\" path=\"/**/lib${n}.so\"/>"));
    EXPECT_EQ("/a/x[1]/y", paths("<Set name=\"d\" value=\"x[1]\"/><File as=\"f\" path=\"/a/${d}/y\"/>"));
    EXPECT_EQ("", paths("<Set name=\"d\" value=\"*\"/><File as=\"f\" path=\"/a/${d}\"/>"));
}

TEST_F(FileCheckTest, ListsForEachRowWhatThatRowNames) {
    for (const char* path : {"/tool1", "/tool2", "/opt/1/x", "/opt/2/x"}) file(path, "1");
    const std::string tools = "<File as=\"t\" nameMatch=\"tool(?P&lt;v&gt;[12])\"/>";
    EXPECT_EQ("/opt/1/x /opt/2/x", paths(tools + R"(<File as="f" path="/opt/${v}/x"/>)"));
}

TEST_F(FileCheckTest, GivesEveryRowTheFilesOfAPathWithoutReferences) {
    for (const char* path : {"/tool1", "/tool2", "/opt/x", "/opt/y"}) file(path, "1");
    const ScanResult result = scan(
        R"(<Signature guid="g" name="n" place="${t.path} ${f.path}"><Detect><File as="t" name="tool?"/>)"
        R"(<File as="f" path="/opt/*"/></Detect><Report><Variable name="both" value="${t.name}${f.name}"/>)"
        R"(</Report></Signature>)");
    EXPECT_EQ("tool1x tool1y tool2x tool2y", result.values("both"));
}

struct InvalidCase {
    const char* condition;
    const char* word;
};

TEST_F(FileCheckTest, RefusesWhatMakesNoSense) {
    const InvalidCase cases[] = {
        {"<File/>", "selects nothing"},
        {"<File name=\"a\" nameMatch=\"b\"/>", "exclude"},
        {"<File name=\"a/b\"/>", "'path'"},
        {"<File path=\"a\"/>", "absolute"},
        {"<File name=\"[\"/>", "']'"},
        {"<File nameMatch=\"(\"/>", "pattern"},
        {"<File name=\"a\" near=\"b\"/>", "'path'"},
        {"<File name=\"a\" near=\"b\" path=\"c\"/>", "nothing binds 'b'"},
        {"<File name=\"a\" minSize=\"-1\"/>", "number"},
        {"<File name=\"a\" type=\"fifo\"/>", "symlink"},
        {"<File name=\"a\" target=\"b\"/>", "symlink"},
        {"<File name=\"a\" sha256=\"00\"/>", "64 hex digits"},
        {"<File name=\"a\" as=\"1\"/>", "name"},
        {"<File name=\"a\" min=\"2\" max=\"1\"/>", "smaller"},
        {"<File name=\"a\" minSize=\"2\" maxSize=\"1\"/>", "larger"},
        {"<File name=\"a\"><File name=\"b\"/></File>", "no other"},
        {"<File name=\"${x\"/>", "'}'"},
        {"<File name=\"${f.nam}\"/><File as=\"f\" name=\"x\"/>", "no property"},
    };
    for (const InvalidCase& c : cases) {
        const std::string answer = truth(c.condition);
        EXPECT_EQ(0U, answer.find("invalid: ")) << c.condition << ": " << answer;
        EXPECT_NE(std::string::npos, answer.find(c.word)) << c.condition << ": " << answer;
    }
}

}  // namespace
