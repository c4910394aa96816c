// What both scanners share besides the files under a root.
#include <gtest/gtest.h>

#include "scanners/shared/options.h"
#include "scanners/shared/output_file.h"
#include "scanners/shared/xml_events.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace {

class EventLog : public XmlEvents {
  public:
    void onStart(const std::string& path, const XmlAttributes& attributes) override {
        log += "+" + path;
        for (const auto& [name, value] : attributes) log += " " + name + "=" + value;
        log += "\n";
    }
    void onEnd(const std::string& path) override { log += "-" + path + "\n"; }
    void onText(const std::string& /*path*/, std::string_view text) override { log += text; }

    std::string log;
};

TEST(XmlEvents, TellThePathOfEveryElement) {
    const TemporaryFolder folder;
    EventLog events;
    EXPECT_EQ("", readXmlFile(folder.file("a.xml", "<a><b x=\"1\" y=\"&lt;\"/><c>t</c></a>"), &events));
    EXPECT_EQ("+a\n+a/b x=1 y=<\n-a/b\n+a/c\nt-a/c\n-a\n", events.log);
}

struct XmlCase {
    const char* why;
    std::string text;
    const char* error;  // after the file's name
};

TEST(XmlEvents, NameTheLineOfAnError) {
    const TemporaryFolder folder;
    std::string deep;
    for (int i = 0; i < 1001; ++i) deep += "<a>";
    const XmlCase cases[] = {
        {"empty", "", ":1: not well-formed XML: no element found"},
        {"mismatch", "<a>\n</b>", ":2: not well-formed XML: mismatched tag"},
        {"too deep", deep, ":1: not well-formed XML: elements are nested too deep"},
    };
    for (const XmlCase& c : cases) {
        EventLog events;
        const std::string path = folder.file("bad.xml", c.text);
        EXPECT_EQ(path + c.error, readXmlFile(path, &events)) << c.why;
    }
}

TEST(XmlEvents, NameAFileThatCannotBeRead) {
    EventLog events;
    EXPECT_EQ("/nonexistent: cannot be opened: No such file or directory",
              readXmlFile("/nonexistent", &events));
    EXPECT_EQ("/: cannot be read: Is a directory", readXmlFile("/", &events));
}

TEST(Options, AreTakenInEveryForm) {
    std::string config, output;
    bool help = false;
    EXPECT_EQ("",
              parseOptions({"--output=o=1", "-c", "--help", "--help"},
                           {{"-c", "--config", &config}, {"-o", "--output", &output}}, {{"--help", &help}}));
    EXPECT_EQ("--help", config);  // what follows a switch is its value, whatever it looks like
    EXPECT_EQ("o=1", output);
    EXPECT_TRUE(help);
}

TEST(OutputFile, TellsThatAFullDiskTookNothing) {
    OutputFile file("/dev/full");
    ASSERT_TRUE(file.isOpen());
    EXPECT_FALSE(file.write("x"));
    EXPECT_FALSE(file.close());
    EXPECT_EQ("No space left on device", file.error());
}

TEST(OutputFile, HoldsWhatWasWritten) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/file";
    OutputFile file(path);
    EXPECT_TRUE(file.write("one "));
    EXPECT_TRUE(file.write("two"));
    EXPECT_TRUE(file.close());
    EXPECT_EQ("one two", readFile(path));
}

}  // namespace
