// The scanner as a program: what it accepts, what it answers, what it leaves behind.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/machine_tree.h"
#include "tests/zukhw/scanner_run.h"

namespace {

class Scan : public testing::Test {
  protected:
    Scan() {
        std::filesystem::create_directory(root);
        plantMachine("proc/meminfo:\n\tMemTotal: 4 kB\n", root);
    }

    ScannerRun scan(const std::vector<std::string>& groups) {
        return runScanner({"-c", folder.file("config.xml", configFor(groups)), "-o", output, "--root", root});
    }

    TemporaryFolder folder;
    const std::string root = folder.path() + "/root";
    const std::string output = folder.path() + "/out.xml";
    const std::string emptyDocument = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Inventory></Inventory>";
};

TEST_F(Scan, WritesADocumentWithoutWhiteSpaceBetweenElements) {
    ASSERT_EQ(0, scan({"Memory"}).status);
    EXPECT_EQ(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Inventory><Memory><TotalBytes>4096</TotalBytes></Memory>"
        "</Inventory>",
        readFile(output));
}

TEST_F(Scan, WritesAnEmptyInventoryWhenNoGroupIsAskedFor) {
    ASSERT_EQ(0, scan({}).status);
    EXPECT_EQ(emptyDocument, readFile(output));
}

TEST_F(Scan, TellsAnUnknownGroupInOneLineAndSkipsIt) {
    const ScannerRun run = scan({"Nonesuch"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("Nonesuch: no such group, skipped\n", run.output);
    EXPECT_EQ(run.output, scan({"Nonesuch", "Nonesuch"}).output);
    EXPECT_EQ(emptyDocument, readFile(output));
}

TEST_F(Scan, GivesNoInstanceOfAGroupThatLinuxDoesNotHave) {
    ASSERT_EQ(0, scan({"WinCluster"}).status);
    EXPECT_EQ(emptyDocument, readFile(output));
}

TEST_F(Scan, MakesTheOutputReadableForItsOwnerOnly) {
    ASSERT_EQ(0, scan({}).status);
    struct stat status {};
    ASSERT_EQ(0, stat(output.c_str(), &status));
    EXPECT_EQ(0600U, status.st_mode & 0777U);
}

TEST_F(Scan, ReplacesWhatTheOutputHeld) {
    folder.file("out.xml", std::string(100000, 'x'));
    ASSERT_EQ(0, scan({}).status);
    EXPECT_EQ(emptyDocument, readFile(output));
}

TEST_F(Scan, RefusesALinkInPlaceOfTheOutput) {
    const std::string target = folder.file("target", "kept");
    std::filesystem::create_symlink(target, output);
    EXPECT_EQ(2, scan({"Memory"}).status);
    EXPECT_EQ("kept", readFile(target));
}

TEST_F(Scan, FailsWhenTheOutputCannotBeWritten) {
    const std::string config = folder.file("config.xml", configFor({"Memory"}));
    for (const char* bad : {"/dev/full", "/nonexistent/folder/out.xml"}) {
        const ScannerRun run = runScanner({"-c", config, "-o", bad, "--root", root});
        EXPECT_EQ(2, run.status) << bad;
        EXPECT_NE(std::string::npos, run.errors.find(bad)) << run.errors;
    }
}

TEST_F(Scan, LeavesNothingBesideTheOutput) {
    ASSERT_EQ(0, scan({"Memory", "Scan Info"}).status);
    std::size_t entries = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path())) ++entries;
    EXPECT_EQ(3U, entries);  // config.xml, out.xml, root
}

struct BadRequest {
    const char* why;
    std::vector<std::string> arguments;
    const char* message;  // part of it
};

TEST_F(Scan, RejectsABadCommandLineOrConfiguration) {
    const std::string good = folder.file("good.xml", configFor({}));
    const std::string broken = folder.file("broken.xml", "<KAV><ZUK></KAV>");
    const BadRequest requests[] = {
        {"nothing", {}, "-c CONFIG is missing"},
        {"no output", {"-c", good}, "-o OUTPUT is missing"},
        {"no value", {"-c"}, "'-c' needs a value"},
        {"twice", {"-c", good, "--config", good}, "'--config' is given twice"},
        {"unknown switch", {"--frobnicate"}, "unknown argument '--frobnicate'"},
        {"no such file", {"-c", "/nonexistent", "-o", output}, "/nonexistent: cannot be opened"},
        {"broken file", {"-c", broken, "-o", output}, "broken.xml:1: not well-formed XML"},
        {"no such root", {"-c", good, "-o", output, "--root", "/nonexistent"}, "--root /nonexistent"},
    };
    for (const BadRequest& request : requests) {
        const ScannerRun run = runScanner(request.arguments);
        EXPECT_EQ(1, run.status) << request.why;
        EXPECT_NE(std::string::npos, run.errors.find(request.message)) << request.why << ": " << run.errors;
        EXPECT_FALSE(std::filesystem::exists(output)) << request.why;
    }
}

TEST_F(Scan, ExplainsItself) {
    EXPECT_NE(std::string::npos, runScanner({"--help"}).output.find("Usage: zukhw"));
    EXPECT_EQ("zukhw 1.0.0.0\n", runScanner({"--version"}).output);
}

TEST_F(Scan, ReadsTheConfigurationAsTheLibraryWritesIt) {
    const std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a notice -->\n"
        "<KAV xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:noNamespaceSchemaLocation=\"zukcli.xsd\">\n"
        "    <ZUK>\n\t\t<Hardware version=\"1.0\">\n\t\t<Group Name=\"Memory\"/>\n\t\t</Hardware>\n    "
        "</ZUK>\n</KAV>\n";
    const std::string config = folder.file("config.xml", text);
    ASSERT_EQ(0, runScanner({"-c", config, "-o", output, "--root", root}).status);
    EXPECT_NE(std::string::npos, readFile(output).find("<TotalBytes>4096</TotalBytes>"));
}

TEST_F(Scan, AccountsForItselfInScanInfo) {
    ASSERT_EQ(0, scan({"Memory", "Scan Info", "WinCluster"}).status);
    const std::string document = readFile(output);
    EXPECT_NE(std::string::npos, document.find("<Root>" + root + "</Root>"));
    EXPECT_NE(std::string::npos, document.find("<Groups>Memory; ScanInfo; WinCluster</Groups>"));
    EXPECT_NE(std::string::npos, document.find("<InstancesTotal>2</InstancesTotal>"));
    EXPECT_NE(std::string::npos, document.find("ScanInfo=Ok(1,0); WinCluster=Unsupported</GroupStatus>"));
}

}  // namespace
