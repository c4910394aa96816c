#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/terminal.h"
#include "tests/cli/zuk_program.h"
#include "tests/support/files.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr char kSignatures[] =
    "<Signatures><Signature guid='g-web' name='web server'><Detect/></Signature>"
    "<Signature guid='g-lib' name='Library'><Detect/></Signature></Signatures>";

std::string match(const std::string& guid, const std::string& version, const std::string& path,
                  const std::string& more = "") {
    return "<MatchedSignature guid='" + guid + "' name='other'><Variable name='version' value='" + version +
           "'/><Variable name='path' value='" + path + "'/>" + more + "</MatchedSignature>";
}

const std::string kFound =
    match("g-web", "1.22", "/usr/sbin/web", "<Variable name='package' value='web-core'/>") +
    match("g-lib", "2.0", "/usr/lib/b.so") + match("g-lib", "1.0", "/opt/a.so");

class Sw : public testing::Test {
  protected:
    std::string file(const std::string& content = kSignatures, const std::string& name = "mine.xml") const {
        return zuk_.folder().file(name, content);
    }
    // What the scanner got as its argument of that number.
    std::string seen() const { return readFile(zuk_.path("seen")); }
    void installRecorder(int argument) const {
        zuk_.installSoftwareScannerThatFinds(
            "", "", "cat \"$" + std::to_string(argument) + "\" > " + zuk_.path("seen"));
    }
    // What a terminal of 50 columns gets.
    std::string tableOf(const std::string& found) const {
        zuk_.installSoftwareScannerThatFinds(found);
        return onTerminal(zuk_.command() + "sw --home " + zuk_.path("home") + " " + file() + " 2>/dev/null",
                          50);
    }

    ZukProgram zuk_;
};

}  // namespace

TEST_F(Sw, ListsEachPlaceByNameAndPath) {
    zuk_.installSoftwareScannerThatFinds(kFound);
    const ShellResult result = zuk_.runSw(file());
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(
        "Software (3)\n"
        "  Name        Version  Place          Package\n"
        "  Library     1.0      /opt/a.so      -\n"
        "  Library     2.0      /usr/lib/b.so  -\n"
        "  web server  1.22     /usr/sbin/web  web-core\n",
        result.out);
    EXPECT_EQ("", result.err);
    EXPECT_TRUE(zuk_.leftNothingBehind());
}

TEST_F(Sw, OtherVariablesStandBehind) {
    zuk_.installSoftwareScannerThatFinds(
        "<MatchedSignature guid='g-lib'><Variable name='home' value='/opt/x'/><Variable name='kind' "
        "value='JDK'/>"
        "<Variable name='vendor' value='V'/><Variable name='empty' value=''/></MatchedSignature>");
    EXPECT_EQ(
        "Software (1)\n"
        "  Name     Version  Place   Package  More\n"
        "  Library  -        /opt/x  -        kind=JDK, vendor=V\n",
        zuk_.runSw(file()).out);
}

TEST_F(Sw, NothingFoundIsSaid) {
    zuk_.installSoftwareScannerThatFinds("");
    const ShellResult result = zuk_.runSw(file());
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("Software\n  none that a signature describes\n", result.out);
}

TEST_F(Sw, OneFileReachesTheScannerAsItIs) {
    zuk_.installSoftwareScannerThatFinds("", "", "printf %s \"$8\" > " + zuk_.path("seen"));
    const std::string path = file(kSignatures, "my file.xml");
    EXPECT_EQ(0, zuk_.runSw(quoted(path)).status);
    EXPECT_EQ(path, seen());
    EXPECT_EQ(kSignatures, readFile(path));
}

TEST_F(Sw, SeveralFilesAreOneScanOfWhatIsInTheirRoots) {
    installRecorder(8);
    const std::string a = file(
        "\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- <Signatures> -->\n<Signatures >\n<Signature guid='a'/>\n"
        "</Signatures>\n<!-- end -->\n",
        "a.xml");
    const std::string b = file(
        "<Signatures><!-- gr\xC3\xB6\xC3\x9F"
        "e --><Signature guid='b'/></Signatures>",
        "b.xml");
    const std::string none = file("<Signatures/>", "none.xml");
    const ShellResult result = zuk_.runSw(a + " " + none + " " + b);
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_THAT(seen(), HasSubstr("<Signatures>\n\n<Signature guid='a'/>\n"
                                  "<!-- gr\xC3\xB6\xC3\x9F"
                                  "e --><Signature guid='b'/></Signatures>\n"));
}

TEST_F(Sw, ACatalogueIsAllItsXmlFilesInByteOrder) {
    installRecorder(8);
    std::filesystem::create_directory(zuk_.path("catalogue"));
    for (const char* name : {"b.xml", "B.xml", "a.xml", "README.md", ".hidden.xml", "c.xml~"}) {
        file(std::string("<Signatures><Signature guid='") + name + "'/></Signatures>",
             std::string("catalogue/") + name);
    }
    const ShellResult result = zuk_.runSw("--catalogue " + zuk_.path("catalogue"));
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_THAT(seen(), HasSubstr("<Signatures>\n<Signature guid='B.xml'/><Signature guid='a.xml'/>"
                                  "<Signature guid='b.xml'/></Signatures>"));
}

TEST_F(Sw, SettingsReachTheScannerWhateverTheyHold) {
    installRecorder(2);
    const ShellResult result =
        zuk_.runSw(file() +
                   " --set 'a=1 < \"2\" & 3' --set=b=@g-lib --set mail=me@there@ "
                   "--plugin system.Prefix=/a=b.c --plugin 'search.Root=/größe' --plugin=search.Root=/x");
    EXPECT_EQ(0, result.status) << result.err;
    for (const char* line :
         {"<Variable name=\"a\" value=\"1 &#60; &#34;2&#34; &#38; 3\" guid=\"\" />",
          "<Variable name=\"b\" value=\"\" guid=\"g-lib\" />",
          "<Variable name=\"mail\" value=\"me@there\" guid=\"\" />",
          "<Attribute name=\"Prefix\" value=\"/a=b.c\"/>", "<Attribute name=\"Root\" value=\"/größe\"/>",
          "<Attribute name=\"Root\" value=\"/x\"/>"}) {
        EXPECT_THAT(seen(), HasSubstr(line));
    }
}

TEST_F(Sw, JsonHasResultsAndWarnings) {
    zuk_.installSoftwareScannerThatFinds(
        match("g-lib", "1\"2", "/a.so", "<Metadata><Cpe>gr&#246;&#223;e</Cpe></Metadata>"),
        "<Event code='denied' severity='info' count='2' guid='g-lib' path='/p'>no &lt;way&gt;</Event>");
    const ShellResult result = zuk_.runSw("--json " + file());
    EXPECT_EQ(R"({
  "results": [
    {
      "guid": "g-lib",
      "name": "Library",
      "variables": {
        "path": "/a.so",
        "version": "1\"2"
      },
      "metadata": "<Metadata><Cpe>größe</Cpe></Metadata>"
    }
  ],
  "warnings": [
    {
      "code": "denied",
      "severity": "info",
      "count": 2,
      "guid": "g-lib",
      "path": "/p",
      "text": "no <way>"
    }
  ]
}
)",
              result.out);
    EXPECT_EQ("", result.err);
}

TEST_F(Sw, WarningsStandApartWithCountsAndNames) {
    zuk_.installSoftwareScannerThatFinds(
        kFound,
        "<Event code='unreadable' count='3' path='/root'>permission denied</Event>"
        "<Event code='undecided' count='1'>2 signatures could not be decided: g-web g-lib</Event>"
        "<Event code='unreadable' count='1' path='/home'>permission denied</Event>"
        "<Event code='version-syntax' guid='g-lib'>\xC3\xB6 is no version&#x9b;</Event>");
    const ShellResult result = zuk_.runSw(file());
    EXPECT_THAT(result.out, StartsWith("Software (3)\n"));
    EXPECT_EQ(
        "zuk: warnings of the scan\n"
        "  unreadable (4)\n"
        "    permission denied: /root (3)\n"
        "    permission denied: /home\n"
        "  undecided (1)\n"
        "    2 signatures could not be decided: 'web server' 'Library'\n"
        "  version-syntax (1)\n"
        "    'Library': \xC3\xB6 is no version\uFFFD\n",
        result.err);
    EXPECT_EQ(0, result.status);
}

TEST_F(Sw, OfManyWarningsOfOneCodeTheFirstAreShown) {
    std::string events;
    for (int i = 0; i < 12; ++i) {
        events += "<Event code='denied' count='1'>file " + std::to_string(i) + "</Event>";
    }
    zuk_.installSoftwareScannerThatFinds("", events);
    const ShellResult result = zuk_.runSw(file());
    EXPECT_THAT(result.err, HasSubstr("denied (12)\n    file 0\n"));
    EXPECT_THAT(result.err, HasSubstr("    file 9\n    and 2 more: --json has them\n"));
}

TEST_F(Sw, LinesOfJoinedFilesAreNotTold) {
    zuk_.installSoftwareScannerThatFinds(
        "", "<Event code='signature-invalid' guid='g-lib'>line 7, column 3: why</Event>");
    const std::string other = file("<Signatures/>", "other.xml");
    EXPECT_THAT(zuk_.runSw(file()).err, HasSubstr("    'Library': line 7, column 3: why\n"));
    EXPECT_THAT(zuk_.runSw(other + " " + file()).err, HasSubstr("    'Library': mine.xml: why\n"));
}

TEST_F(Sw, ControlCharactersDoNotReachTheTerminal) {
    zuk_.installSoftwareScannerThatFinds(match("g-lib", "1&#x9b;2J", "/a&#10;b"));
    EXPECT_THAT(zuk_.runSw(file()).out, HasSubstr("1\uFFFD2J     /a\uFFFDb"));
}

TEST_F(Sw, AFileThatIsNotUtf8IsTakenForLatin1) {
    zuk_.installSoftwareScannerThatFinds(match("g", "1", "/a"));
    EXPECT_THAT(zuk_.runSw(file("<Signatures><Signature guid='g' name='caf\xE9'/></Signatures>")).out,
                HasSubstr("  café  1 "));
}

TEST_F(Sw, ASignatureThatNoFileHasIsNamedByItsGuid) {
    zuk_.installSoftwareScannerThatFinds(match("strange", "1", "/a"));
    EXPECT_THAT(zuk_.runSw(file()).out, HasSubstr("  strange  1 "));
}

TEST_F(Sw, ATerminalGetsATableThatFitsIt) {
    EXPECT_EQ(
        "Software (2)\r\n"
        "  Name        Version  Place               Package\r\n"
        "  Library     1.0      …omething.so.1.2.3  -\r\n"
        "  web server  2.0      /b                  -\r\n",
        tableOf(match("g-lib", "1.0", "/usr/lib/x86_64-linux-gnu/libsomething.so.1.2.3") +
                match("g-web", "2.0", "/b", "<Variable name='more' value='more'/>")));
}

TEST_F(Sw, ATerminalGetsALongPathWithoutItsMiddle) {
    EXPECT_THAT(tableOf(match("g-lib", "1.0", "/usr/lib/x86_64-linux-gnu/libb.so.1")),
                HasSubstr(" 1.0      /usr/lib/x…/libb.so.1  -"));
}

TEST_F(Sw, ATerminalGetsALongPlaceThatIsNoPathWithoutItsEnd) {
    EXPECT_THAT(tableOf(match("g-lib", "1.0", "package library-with-a-long-name")),
                HasSubstr(" 1.0      package library-with…  -"));
}

TEST_F(Sw, ProgressIsShownOnATerminal) {
    zuk_.installSoftwareScannerThatFinds("", "", "echo 'zuksw: done: entries=7'; echo other");
    EXPECT_EQ(
        "zuk: scanning, with 1 file of signatures\r\nzuk: done: entries=7\r\n",
        onTerminal(zuk_.command() + "sw --home " + zuk_.path("home") + " " + file() + " >/dev/null", 80));
}

TEST_F(Sw, ProgressIsNotShownInAFile) {
    zuk_.installSoftwareScannerThatFinds("", "", "echo 'zuksw: done: entries=7'");
    EXPECT_EQ("", zuk_.runSw(file()).err);
}

TEST_F(Sw, VerboseShowsAllMessagesAnywhere) {
    zuk_.installSoftwareScannerThatFinds("", "", "echo 'zuksw: done: entries=7'");
    EXPECT_THAT(zuk_.runSw("-v " + file()).err, HasSubstr("[zuksw: done: entries=7]"));
}
