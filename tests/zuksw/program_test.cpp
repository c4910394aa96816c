// The program as its caller sees it: exit status, messages, files.

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>

#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class ProgramTest : public ScanTest {
  protected:
    int statusOf(const std::string& arguments) { return shell(program() + " " + arguments + " 2>&1").status; }

    const std::string configuration_ = work_.file("c.xml", "<KAV><ZUK><XSE version=\"1.0\"/></ZUK></KAV>");
    const std::string signatures_ = work_.file("s.xml", "<Signatures></Signatures>");
};

TEST_F(ProgramTest, UsageErrorsEndWithTwo) {
    for (const std::string arguments : {"", "-c a -o b -e c", "-c a -c b -o c -e d -i e", "-x",
                                        "-c a -o b -e b -i c", "--check", "--check -i a -o b"}) {
        EXPECT_EQ(2, statusOf(arguments)) << arguments;
    }
}

TEST_F(ProgramTest, HelpAndVersionEndWithZero) {
    EXPECT_EQ(0, statusOf("--help"));
    EXPECT_EQ("zuksw " ZUK_VERSION "\n", shell(program() + " --version").out);
}

TEST_F(ProgramTest, EmptyScanGivesCompleteEmptyFiles) {
    const ScanResult result = run(configuration_, signatures_);
    EXPECT_EQ(0, result.status) << result.messages;
    EXPECT_EQ(0U, result.matches.size());
    EXPECT_EQ(0U, result.events.size()) << result.warnings;
    EXPECT_NE(std::string::npos, result.messages.find("zuksw: done: signatures=0 matched=0"))
        << result.messages;
}

TEST_F(ProgramTest, MissingConfigurationIsFour) {
    EXPECT_EQ(4, run(work_.path() + "/none", signatures_).status);
    EXPECT_EQ(4, run(work_.file("bad.xml", "<KAV><"), signatures_).status);
}

TEST_F(ProgramTest, ConfigurationIsJudgedBeforeSignatures) {
    EXPECT_EQ(4, run(work_.path() + "/none", work_.path() + "/none").status);
}

TEST_F(ProgramTest, OutputThatCannotBeWrittenIsFive) {
    EXPECT_EQ(
        5, statusOf("-c " + configuration_ + " -o /nowhere/o -e " + work_.path() + "/e -i " + signatures_));
    EXPECT_EQ(
        5, statusOf("-c " + configuration_ + " -e /nowhere/o -o " + work_.path() + "/e -i " + signatures_));
}

TEST_F(ProgramTest, FullDiskAtTheEndIsFive) {
    EXPECT_EQ(5,
              statusOf("-c " + configuration_ + " -o /dev/full -e " + work_.path() + "/e -i " + signatures_));
    EXPECT_EQ(5,
              statusOf("-c " + configuration_ + " -o " + work_.path() + "/o -e /dev/full -i " + signatures_));
}

TEST_F(ProgramTest, OutputFilesAreForTheirOwnerOnly) {
    run(configuration_, signatures_);
    struct stat facts = {};
    ASSERT_EQ(0, stat((work_.path() + "/output.xml").c_str(), &facts));
    EXPECT_EQ(0600U, facts.st_mode & 0777U);
}

TEST_F(ProgramTest, OutputThatIsALinkIsRefused) {
    std::filesystem::create_symlink("elsewhere", work_.path() + "/output.xml");
    EXPECT_EQ(5, run(configuration_, signatures_).status);
}

TEST_F(ProgramTest, WritesNoFileBesideTheTwo) {
    const TemporaryFolder folder;
    EXPECT_EQ(0, statusOf("-c " + configuration_ + " -o " + folder.path() + "/o -e " + folder.path() +
                          "/e -i " + signatures_));
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        count += entry.exists() ? 1 : 0;
    EXPECT_EQ(2U, count);
}

struct RejectedCase {
    const char* what;
    std::string bytes;
    const char* word;  // in the message
};

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

TEST_F(ProgramTest, RejectedSignatureFilesAreThree) {
    const std::string head = "<Signatures><Signature guid='g' name='n'><Detect>";
    const RejectedCase cases[] = {
        {"empty", "", "no element"},
        {"malformed", "<Signatures>", "line 1"},
        {"another root", "<Signature/>", "Signatures"},
        {"doctype", "<!DOCTYPE Signatures><Signatures/>", "DOCTYPE"},
        {"entity bomb", "<!DOCTYPE a [<!ENTITY b 'xx'><!ENTITY c '&b;&b;'>]><Signatures>&c;</Signatures>",
         "DOCTYPE"},
        {"nesting", head + repeated("<All>", 65), "64"},
        {"long attribute", "<Signatures><a b='" + std::string(65 * 1024, 'x') + "'/></Signatures>", "64 KiB"},
        {"crowd", "<Signatures>" + repeated("<a/>", 100'001) + "</Signatures>", "100000"},
        {"declaration in the middle", "<Signatures><?xml version='1.0'?></Signatures>", "line 1, column 13"},
    };
    for (const RejectedCase& c : cases) {
        const ScanResult result = run(configuration_, work_.file("bad.xml", c.bytes));
        EXPECT_EQ(3, result.status) << c.what;
        EXPECT_NE(std::string::npos, result.messages.find(c.word)) << c.what << ": " << result.messages;
        EXPECT_NE(std::string::npos, result.messages.find("bad.xml")) << c.what << ": " << result.messages;
    }
    EXPECT_EQ(3, run(configuration_, work_.path() + "/none").status);
}

TEST_F(ProgramTest, BytesThatAreNoUtf8AreLatin1) {
    const std::string text =
        "<Signature guid=\"g\" name=\"caf\xE9\"><Detect><Test value=\"1\" eq=\"1\"/></Detect></Signature>";
    const ScanResult result = scan(text);
    EXPECT_EQ(0, result.status);
    EXPECT_NE(std::string::npos, result.output.find("caf&#233;")) << result.output;
    EXPECT_TRUE(result.has("encoding"));
}

// A signature that needs the walk is read twice, the second time by itself.
TEST_F(ProgramTest, BytesOfALatin1FileThatAreUtf8ByThemselvesAreLatin1) {
    file("/f", "");
    const ScanResult result =
        scan(signature("<File name=\"f\"/><Set name=\"v\" value=\"\xC3\xA9\"/>", {"v"}) + "<!-- \xE9 -->");
    EXPECT_TRUE(result.has("encoding"));
    EXPECT_NE(std::string::npos, result.output.find("&#195;&#169;")) << result.output;
}

// The signatures come through a pipe, so that the program is sure to wait for them when the signal comes.
TEST_F(ProgramTest, SigtermEndsTheReadingOfSignatures) {
    const std::string text =
        work_.file("text.xml", "<Signatures>" + signature("<File name=\"f\"/>") + "</Signatures>");
    const std::string pipe = work_.path() + "/pipe";
    ASSERT_EQ(0, ::mkfifo(pipe.c_str(), 0600));
    const ScanResult result = take(shell(
        commandLine(configurationFile({}, "<Variable name=\"v\" value=\"1\" guid=\"\"/>"), pipe) +
        " & exec 3>" + quoted(pipe) + "; kill -TERM $!; cat " + quoted(text) + " >&3; exec 3>&-; wait $!"));
    EXPECT_EQ(0, result.status) << result.messages;
    EXPECT_NE(std::string::npos, result.messages.find("done: signatures=0 ")) << result.messages;
    EXPECT_TRUE(result.has("time-budget"));
    EXPECT_FALSE(result.has("preset-unused"));
}

TEST_F(ProgramTest, SignaturesMayStandBackToBack) {
    const std::string one = signature("<Test value=\"1\" eq=\"1\"/>");
    const ScanResult result = scan(one + one);
    EXPECT_EQ(2U, result.matches.size());
    EXPECT_TRUE(result.has("duplicate-guid"));
}

TEST_F(ProgramTest, TextBetweenSignaturesIsAnEvent) {
    EXPECT_TRUE(scan("stray").has("stray-text"));
    EXPECT_TRUE(scan("\xEF\xBB\xBF" + signature("<Test value=\"1\" eq=\"1\"/>")).has("stray-text"));
}

TEST_F(ProgramTest, StrictRejectsAnInvalidSignature) {
    const std::string bad = signature("<Nothing/>");
    EXPECT_EQ(0, scan(bad).status);
    EXPECT_EQ(3, scan(bad, {{"limits/Strict", "yes"}}).status);
}

TEST_F(ProgramTest, CheckExplainsEveryMistake) {
    const std::string path =
        work_.file("check.xml",
                   "<Signatures>\n<Signature guid='g' name='n'><Detect>\n<File nme='x'/>\n"
                   "<Test value='${y}' eq='1'/></Detect></Signature></Signatures>");
    const ShellResult result = shell(program() + " --check -i " + path);
    EXPECT_EQ(3, result.status);
    EXPECT_NE(std::string::npos,
              result.out.find("check.xml:3:1: signature 'n': <File>: the attribute 'nme' is "
                              "unknown here; did you mean 'name'?"))
        << result.out;
    EXPECT_NE(std::string::npos, result.out.find("check.xml:4:1: signature 'n': nothing binds 'y'"))
        << result.out;
}

TEST_F(ProgramTest, CheckIsQuietAboutGoodSignatures) {
    const std::string path =
        work_.file("check.xml", "<Signatures>" + signature("<File name='x'/>") + "</Signatures>");
    const ShellResult result = shell(program() + " --check -i " + path);
    EXPECT_EQ(0, result.status) << result.out;
    EXPECT_EQ("zuksw: checked: signatures=1 invalid=0 warnings=0\n", result.out);
}

}  // namespace
