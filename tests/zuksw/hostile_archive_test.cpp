// Archives and texts that are made to hurt, seen through the program.

#include "tests/zuksw/archive_builder.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class HostileArchiveTest : public ScanTest {
  protected:
    // One signature that looks into /a for members that match `path`.
    ScanResult look(const std::string& path, const std::string& more = "") {
        return scan(signature("<File as=\"a\" path=\"/a\"/><Member of=\"a\" path=\"" + path +
                                  "\" as=\"m\"/>" + more + "<Set name=\"p\" value=\"${m.path}\"/>",
                              {"p"}));
    }
};

TEST_F(HostileArchiveTest, ABombIsLeftAndTold) {
    for (const ArchiveForm form : {zipForm, tarGzForm, tarXzForm, tarZstForm}) {
        file("/a", packArchive(form, {{"bomb", std::string(12U << 20U, '\0')}}));
        const ScanResult result = look("bomb");
        EXPECT_EQ(0, result.status);
        EXPECT_TRUE(result.has("archive-limit")) << result.warnings;
        EXPECT_TRUE(result.has("undecided")) << result.warnings;
    }
}

TEST_F(HostileArchiveTest, MembersBesideAWrongCentralDirectoryAreReadOrUndecided) {
    const std::string good = packArchive(zipForm, {{"one", "1"}, {"two", "2"}});
    const std::size_t central = good.find("PK\x01\x02");
    ASSERT_NE(std::string::npos, central);
    std::string noDirectory = good;
    noDirectory.replace(central, 4, "XXXX");
    std::string wrongOffset = good;
    wrongOffset[good.size() - 6] = '\x7F';  // where the directory begins
    for (const std::string& bytes : {noDirectory, wrongOffset, good.substr(0, central)}) {
        file("/a", bytes);
        const ScanResult result = look("one");
        EXPECT_EQ(0, result.status);
        EXPECT_TRUE(!result.matches.empty() || result.has("bad-archive")) << result.warnings;
    }
}

TEST_F(HostileArchiveTest, AnEncryptedMemberIsUndecided) {
    std::string bytes = packArchive(zipForm, {{"secret", "x"}, {"open", "y"}});
    bytes[6] = static_cast<char>(bytes[6] | 1);
    const std::size_t central = bytes.find("PK\x01\x02");
    bytes[central + 8] = static_cast<char>(bytes[central + 8] | 1);
    file("/a", bytes);
    EXPECT_TRUE(look("secret").has("undecided"));
    EXPECT_EQ("/a!/open", look("open").values("p"));
}

TEST_F(HostileArchiveTest, AMembersNameLeadsNowhere) {
    file("/etc/passwd", "root");
    file("/d/a", "");
    file("/a", packArchive(tarForm, {{"../../etc/passwd", "member"}, {"/etc/passwd", "rooted"}}));
    EXPECT_EQ("/a!/../../etc/passwd", look("../../etc/passwd").values("p"));
    EXPECT_EQ("/a!/etc/passwd", look("etc/passwd", "<Content of=\"m\" match=\"rooted\"/>").values("p"));
    EXPECT_TRUE(look("**", "<Content of=\"m\" match=\"root$\"/>").matches.empty());
    EXPECT_TRUE(look("**", "<File near=\"m\" path=\"passwd\"/>").matches.empty());
}

TEST_F(HostileArchiveTest, JarsInJarsAreReadToTheLimit) {
    const std::string jar = packArchive(zipForm, {{"pom.properties", "version=1"}});
    const std::string war = packArchive(zipForm, {{"WEB-INF/lib/x.jar", jar}});
    file("/ear", packArchive(zipForm, {{"web.war", war}}));
    const std::string two =
        "<File as=\"a\" path=\"/ear\"/><Member of=\"a\" path=\"*.war\" as=\"b\"/>"
        "<Member of=\"b\" path=\"**/*.jar\" as=\"c\"/>";
    const std::string three = two + "<Member of=\"c\" path=\"pom.properties\" as=\"d\"/>";
    EXPECT_EQ("yes", truth(two));
    EXPECT_EQ("unknown", truth(three));
    EXPECT_EQ("yes", truth(three, {{"archive/MaxDepth", "3"}}));
}

struct DeepCase {
    const char* format;
    const char* key;
    std::string unit;
};

TEST_F(HostileArchiveTest, ValuesAMillionLevelsDeepAreUndecided) {
    const DeepCase cases[] = {
        {"json", "/a", "["}, {"json", "/a", "{\"a\":"}, {"yaml", "/a", "["}, {"xml", "//a", "<a>"}};
    for (const DeepCase& c : cases) {
        std::string text;
        for (int i = 0; i < 1'000'000; ++i) text += c.unit;
        file("/f", text);
        const ScanResult result = scan(signature("<File as=\"f\" path=\"/f\"/><Value of=\"f\" format=\"" +
                                                 std::string(c.format) + "\" key=\"" + c.key + "\"/>"));
        EXPECT_EQ(0, result.status) << c.format;
        EXPECT_TRUE(result.has("bad-format")) << c.format;
        EXPECT_TRUE(result.has("undecided")) << c.format;
    }
}

}  // namespace
