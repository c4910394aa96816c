#include <unistd.h>

#include "tests/zuksw/scan_fixture.h"

namespace {

class ContentCheckTest : public ScanTest {
  protected:
    std::string look(const std::string& attributes, const Settings& settings = {}) {
        return scanFile(attributes, settings).values("v");
    }
    ScanResult scanFile(const std::string& attributes, const Settings& settings = {}) {
        return scan(
            "<Signature guid=\"g\" name=\"n\"><Input name=\"v\"/><Detect><File as=\"f\" "
            "path=\"/f\"/><Content of=\"f\" " +
                attributes +
                "/></Detect><Report><Variable name=\"v\" value=\"${v:-found}\"/></Report></Signature>",
            settings);
    }
};

const char kVersion[] = "match=\"v(?P&lt;v&gt;\\d+)\"";

TEST_F(ContentCheckTest, TakesFirstLastAllOrOnly) {
    file("/f", "v1 v2 v2 v3");
    EXPECT_EQ("1", look(kVersion));
    EXPECT_EQ("3", look(kVersion + std::string(" take=\"last\"")));
    EXPECT_EQ("1 2 3", look(kVersion + std::string(" take=\"all\"")));
    const ScanResult only = scanFile(kVersion + std::string(" take=\"only\""));
    EXPECT_EQ("", only.values("v"));
    EXPECT_TRUE(only.has("ambiguous"));
    EXPECT_TRUE(only.has("undecided"));
    file("/f", "v2 v2");
    EXPECT_EQ("2", look(kVersion + std::string(" take=\"only\"")));
}

TEST_F(ContentCheckTest, LooksAtBytes) {
    file("/f", std::string("a\0b\xFF\nline2", 10));
    EXPECT_EQ("found", look("match=\"a\\x00b\\xFF\""));
    EXPECT_EQ("", look("match=\"\\xFF.line\""));
    EXPECT_EQ("found", look("match=\"(?s)\\xFF.line\""));
    EXPECT_EQ("found", look("match=\"^a\""));
    EXPECT_EQ("", look("match=\"^line\""));
    EXPECT_EQ("found", look("match=\"(?m)^line\""));
    EXPECT_EQ("found", look("match=\"line2$\""));
}

TEST_F(ContentCheckTest, LooksForTextAndHex) {
    file("/f", std::string("xAbC\x7F"
                           "E\0L",
                           8) +
                   std::string("u\0t\0f\0", 6));
    EXPECT_EQ("found", look("text=\"AbC\""));
    EXPECT_EQ("", look("text=\"abc\""));
    EXPECT_EQ("found", look("text=\"abc\" nocase=\"yes\""));
    EXPECT_EQ("found", look("hex=\"7f 45 ?? 4C\""));
    EXPECT_EQ("", look("hex=\"7f 45 4C\""));
    EXPECT_EQ("found", look("text=\"utf\" encoding=\"utf16le\""));
    EXPECT_EQ("found", look("text=\"UTF\" encoding=\"utf16le\" nocase=\"yes\""));
    EXPECT_EQ("", look("text=\"utf\" encoding=\"utf16be\""));
}

TEST_F(ContentCheckTest, LooksAtHeadAndTail) {
    file("/f", "v1....v2");
    EXPECT_EQ("", look("match=\"v2\" head=\"7\""));
    EXPECT_EQ("found", look("match=\"v1\" head=\"2\""));
    EXPECT_EQ("2", look(kVersion + std::string(" tail=\"3\"")));
    EXPECT_EQ("found", look("match=\"v1$\" head=\"2\""));
}

TEST_F(ContentCheckTest, FindsWhatLiesAcrossWindows) {
    const std::size_t window = std::size_t{4} << 20U;
    for (const std::size_t at : {window - 4, window - 1, window, 2 * window - 3}) {
        std::string data(3 * window, '.');
        data.replace(at, 4, "v123");
        file("/f", data);
        EXPECT_EQ("123", look(kVersion + std::string(" take=\"only\""))) << at;
    }
}

TEST_F(ContentCheckTest, SkipsTheHolesOfSparseFiles) {
    file("/f", "");
    const std::string path = treePath("/f");
    ASSERT_EQ(0, truncate(path.c_str(), off_t{1} << 40));
    EXPECT_EQ("unknown", truth("<File as=\"f\" path=\"/f\"/><Content of=\"f\" match=\"v1\"/>"));
    FILE* stream = fopen(path.c_str(), "r+");
    ASSERT_NE(nullptr, stream);
    ASSERT_EQ(0, fseeko(stream, off_t{1} << 39, SEEK_SET));
    ASSERT_EQ(2U, fwrite("v1", 1, 2, stream));
    ASSERT_EQ(0, fclose(stream));
    EXPECT_EQ("1", look(kVersion, {{"content/MaxFileSize", "2048G"}}));
    EXPECT_EQ("", look(kVersion + std::string(" head=\"100\"")));
}

TEST_F(ContentCheckTest, LeavesOpenWhatIsTooLargeOrDenied) {
    file("/f", "v1");
    const ScanResult large = scanFile(kVersion, {{"content/MaxFileSize", "1"}});
    EXPECT_TRUE(large.has("too-large"));
    EXPECT_TRUE(large.has("undecided"));
    EXPECT_EQ("1", look(kVersion + std::string(" head=\"10\""), {{"content/MaxFileSize", "1"}}));
    const ScanResult denied = scanFile(kVersion, {{"content/Deny", "/f"}});
    EXPECT_TRUE(denied.has("denied"));
    EXPECT_TRUE(denied.has("undecided"));
    EXPECT_TRUE(scanFile(kVersion, {{"content/MaxTotal", "1"}}).has("too-large"));
}

TEST_F(ContentCheckTest, CutsLongCaptures) {
    file("/f", "v" + std::string(3000, '7'));
    EXPECT_EQ(std::string(1024, '7'), look(kVersion));
    EXPECT_EQ("77", look(kVersion, {{"content/MaxCapture", "2"}}));
}

TEST_F(ContentCheckTest, AMatchIsAtMost64KibLong) {
    file("/f", "a" + std::string(70'000, '.') + "b a....b");
    EXPECT_EQ("....", look("match=\"a(?P&lt;v&gt;[^a]*)b\""));
    EXPECT_EQ(std::string(1024, '.'),
              look("match=\"a(?P&lt;v&gt;\\.*)\""));  // a shorter one from the same place
}

TEST_F(ContentCheckTest, BindsTheSameNameOnlyToTheSameText) {
    file("/f", "v1 w1 x2");
    const std::string open = "<File as=\"f\" path=\"/f\"/>";
    EXPECT_EQ("yes", truth(open + "<Content of=\"f\" match=\"v(?P&lt;n&gt;.)\"/><Content of=\"f\" "
                                  "match=\"w(?P&lt;n&gt;.)\"/>"));
    EXPECT_EQ("no", truth(open + "<Content of=\"f\" match=\"v(?P&lt;n&gt;.)\"/><Content of=\"f\" "
                                 "match=\"x(?P&lt;n&gt;.)\"/>"));
    EXPECT_EQ("no", truth(open + "<Content of=\"f\" match=\"v(?P&lt;n&gt;.)\"/><Content of=\"f\" "
                                 "match=\"x${n}\"/>"));
    EXPECT_EQ("yes", truth(open + "<Content of=\"f\" match=\"v(?P&lt;n&gt;.)\"/><Content of=\"f\" "
                                  "match=\"w${n}\"/>"));
}

TEST_F(ContentCheckTest, QuotesWhatIsPutIntoAPattern) {
    file("/f", "a.b axb");
    const std::string open = "<File as=\"f\" path=\"/f\"/><Set name=\"t\" value=\"a.b\"/>";
    EXPECT_EQ("yes", truth(open + "<Content of=\"f\" match=\"^${t} \"/>"));
    EXPECT_EQ("no", truth(open + "<Content of=\"f\" match=\"${t}$\"/>"));
}

TEST_F(ContentCheckTest, RefusesWhatMakesNoSense) {
    const std::string open = "<File as=\"f\" path=\"/f\"/>";
    for (const std::string condition :
         {"<Content of=\"f\"/>", "<Content of=\"f\" match=\"a\" text=\"b\"/>",
          "<Content of=\"f\" hex=\"7\"/>", "<Content of=\"f\" match=\"a{1001}\"/>",
          "<Content of=\"f\" match=\"a\" take=\"some\"/>", "<Content of=\"f\" match=\"a\" nocase=\"yes\"/>",
          "<Content of=\"f\" match=\"a\" head=\"1\" tail=\"1\"/>", "<Content match=\"a\"/>",
          "<Content of=\"f\" match=\"(?P&lt;f&gt;a)\"/>"}) {
        EXPECT_EQ(0U, truth(open + condition).find("invalid: ")) << condition;
    }
}

TEST_F(ContentCheckTest, OpensAFileOnceForAllConditions) {
    file("/f", "\177ELF a b c");
    const std::string conditions =
        "<File as=\"f\" path=\"/f\" format=\"elf\"/><Content of=\"f\" match=\"a\"/>"
        "<Content of=\"f\" match=\"b\"/>";
    const ScanResult result = scan(signature(conditions) + signature(conditions));
    EXPECT_NE(std::string::npos, result.messages.find("results=2 ")) << result.messages;
    EXPECT_NE(std::string::npos, result.messages.find(" opened=1 ")) << result.messages;
}

}  // namespace
