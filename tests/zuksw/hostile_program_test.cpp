// What the program does when it is pressed: patterns made to be slow, very many signatures, no time, no
// memory, no room on the disk, a signal in the middle.

#include <sys/stat.h>

#include "tests/support/sanitized.h"
#include "tests/zuksw/scan_fixture.h"
#include "tests/zuksw/value_cases.h"

namespace {

class HostileProgramTest : public ScanTest {
  protected:
    // Bytes in which a search for kSlow has to keep hundreds of possibilities in mind.
    static std::string slowBytes(std::size_t size) {
        std::string bytes;
        std::uint64_t state = 1;
        while (bytes.size() < size) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            bytes += (state >> 40U & 1U) == 0 ? 'a' : 'b';
        }
        return bytes;
    }
    static std::string search(const std::string& pattern) {
        return "<File as=\"f\" path=\"/f\"/><Content of=\"f\" match=\"" + pattern + "\"/>";
    }
    static std::string withGuid(const std::string& guid, const std::string& conditions) {
        return "<Signature guid=\"" + guid + "\" name=\"n\"><Detect>" + conditions + "</Detect></Signature>";
    }
};

const char kSlow[] = "a[ab]{400}x";

TEST_F(HostileProgramTest, PatternsThatBacktrackElsewhereAreLinear) {
    file("/f", std::string(1 << 20, 'a'));
    EXPECT_EQ("no", truth(search("(a*)*b")));
    EXPECT_EQ("no", truth(search("(.{1,250}){3}x")));
    for (const char* tooMuch : {"a{1001}", "(.{1,500}){3}x"}) {
        EXPECT_EQ(0U, truth(search(tooMuch)).find("invalid: ")) << tooMuch;
    }
}

TEST_F(HostileProgramTest, WhatIsOpenWhenTheTimeIsUpIsUndecidedAndTheRestIsKept) {
    file("/f", slowBytes(4 << 20));
    const ScanResult result = scan(withGuid("fast", "<File path=\"/f\"/>") + withGuid("slow", search(kSlow)),
                                   {{"limits/TimeBudget", "1"}, {"limits/Threads", "1"}});
    EXPECT_EQ(0, result.status) << result.messages;
    ASSERT_EQ(1U, result.matches.size()) << result.warnings;
    EXPECT_EQ("fast", result.matches[0].guid);
    EXPECT_TRUE(result.has("time-budget")) << result.warnings;
    EXPECT_NE(std::string::npos, result.textOf("undecided").find("slow")) << result.warnings;
}

TEST_F(HostileProgramTest, ConditionsThatOnlyComputeKeepToTheTime) {
    for (int i = 0; i < 100; ++i) file("/f" + std::to_string(i), "");
    std::string conditions = "<File as=\"a\" name=\"f*\"/><File as=\"b\" name=\"*\"/>";
    for (int i = 0; i < 5000; ++i) conditions += "<Test value=\"${a.path}${b.path}\" match=\"^/f.*[0-9]$\"/>";
    const ScanResult result = scan(signature(conditions), {{"limits/TimeBudget", "1"}});
    EXPECT_EQ(0, result.status) << result.messages;
    EXPECT_TRUE(result.has("undecided")) << result.warnings;
}

TEST_F(HostileProgramTest, ASignalStopsTheScanAndTheFilesAreComplete) {
    file("/f", slowBytes(4 << 20));
    const std::string command = commandLine(configurationFile(), signatureFile(signature(search(kSlow))));
    for (const char* signal : {"TERM", "INT"}) {
        std::filesystem::remove(work_.path() + "/output.xml");
        // A shell makes its background commands deaf to SIGINT; env gives them their ears back.
        const ScanResult result = take(shell("env --default-signal=INT " + command + " & while [ ! -e " +
                                             quoted(work_.path() + "/output.xml") +
                                             " ]; do sleep 0.01; done; kill -" + signal + " $!; wait $!"));
        EXPECT_EQ(0, result.status) << signal << result.messages;
        EXPECT_TRUE(result.has("time-budget")) << signal << result.warnings;
        EXPECT_TRUE(result.has("undecided")) << signal << result.warnings;
    }
}

TEST_F(HostileProgramTest, AHundredThousandSignaturesAreRead) {
    std::string text;
    for (int i = 0; i < (kSanitized ? 10'000 : 100'000); ++i) {
        text += withGuid("g" + std::to_string(i), "<File name=\"f" + std::to_string(i) + "\"/>");
    }
    file("/f7777", "");
    const ScanResult result = scan(text);
    EXPECT_EQ(0, result.status) << result.messages;
    ASSERT_EQ(1U, result.matches.size());
    EXPECT_EQ("g7777", result.matches[0].guid);
}

TEST_F(HostileProgramTest, OneSignatureMoreThanAHundredThousandIsThree) {
    const ScanResult result = scan(repeated("<Signature guid=\"g\" name=\"n\"/>", 100'001));
    EXPECT_EQ(3, result.status);
    EXPECT_NE(std::string::npos, result.messages.find("100000 signatures")) << result.messages;
}

struct CrowdCase {
    const char* what;
    const char* head;
    const char* unit;  // stands there very many times
    const char* tail;
};

TEST_F(HostileProgramTest, CrowdsInsideASignatureMakeItInvalidAndNoMore) {
    const CrowdCase cases[] = {
        {"inputs", "", "<Input name=\"a\"/>", "<Detect><Test value=\"1\" eq=\"1\"/></Detect>"},
        {"variables", "<Detect><Test value=\"1\" eq=\"1\"/></Detect><Report>",
         "<Variable name=\"%\" value=\"1\"/>", "</Report>"},
        {"conditions", "<Detect>", "<None/>", "</Detect>"},
        {"attributes", "<Detect><File name=\"f\"", " a%=\"\"", "/></Detect>"},
    };
    for (const CrowdCase& c : cases) {
        std::string text = "<Signature guid=\"g\" name=\"n\">" + std::string(c.head);
        for (int i = 0; i < (kSanitized ? 20'000 : 200'000); ++i) {
            const std::string unit = c.unit;
            const std::size_t number = unit.find('%');
            text += number == unit.npos
                        ? unit
                        : unit.substr(0, number) + std::to_string(i) + unit.substr(number + 1);
        }
        const ScanResult result = scan(text + c.tail + "</Signature>");
        EXPECT_EQ(0, result.status) << c.what << result.messages;
        EXPECT_TRUE(result.has("signature-invalid")) << c.what;
    }
}

TEST_F(HostileProgramTest, RowsThatMultiplyAreLimitedAsAWhole) {
    for (int i = 0; i < 300; ++i) file("/f" + std::to_string(i), "");
    const ScanResult result = scan(signature("<File as=\"a\" name=\"f*\"/><File as=\"b\" name=\"*\"/>"
                                             "<Set name=\"v\" value=\"${a.path} ${b.path}\"/>",
                                             {"v"}),
                                   {{"limits/MaxRows", "1000"}});
    EXPECT_EQ(1000U, result.matches.size());
    EXPECT_TRUE(result.has("rows-limit")) << result.warnings;
}

TEST_F(HostileProgramTest, AFileThatMayGrowNoFurtherIsFive) {
    for (int i = 0; i < 100; ++i) file("/f" + std::to_string(i), "");
    const std::string text =
        signature("<File as=\"f\" name=\"f*\"/><Set name=\"p\" value=\"${f.path}\"/>", {"p"});
    before_ = "ulimit -f 4; ";
    const ScanResult result = scan(text);
    EXPECT_EQ(5, result.status) << result.messages;
    EXPECT_NE(std::string::npos, result.messages.find("output.xml")) << result.messages;
}

TEST_F(HostileProgramTest, MemoryThatRunsOutIsOne) {
    if (kSanitized) GTEST_SKIP() << "a sanitizer needs more address space than can be limited";
    const std::string signatures = work_.file("large.xml", "");
    ASSERT_EQ(0, truncate(signatures.c_str(), 60 << 20));
    before_ = "ulimit -v 100000; ";
    const ScanResult result = run(configurationFile(), signatures);
    EXPECT_EQ(1, result.status) << result.messages;
    EXPECT_NE(std::string::npos, result.messages.find("memory")) << result.messages;
}

TEST_F(HostileProgramTest, ThreadsThatCannotBeHadAreDoneWithout) {
    if (kSanitized) GTEST_SKIP() << "a sanitizer needs more address space than can be limited";
    for (int i = 0; i < 100; ++i) file("/d" + std::to_string(i) + "/f", "");
    before_ = "ulimit -v 300000; ";
    const ScanResult result = scan(signature("<File name=\"f\" min=\"100\"/>"), {{"limits/Threads", "64"}});
    EXPECT_EQ(0, result.status) << result.messages;
    EXPECT_EQ(1U, result.matches.size());
}

}  // namespace
