// The documents that the scanner writes against schemas/zukhw-output.xsd, judged by xmllint.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "scanners/shared/affix.h"
#include "scanners/zukhw/collectors.h"
#include "tests/support/files.h"
#include "tests/support/xml_schema.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/scanner_run.h"

namespace {

#define SKIP_WITHOUT_JUDGE() \
    if (!haveXmllint()) GTEST_SKIP() << "xmllint is not installed"

// Empty when all of the files are valid; else what xmllint says.
std::string judge(const std::string& files) {
    return schemaComplaint("zukhw-output.xsd", files);
}

std::string allGroups() {
    std::vector<std::string> groups;
    for (const Collector& collector : allCollectors()) groups.emplace_back(collector.configName);
    return configFor(groups);
}

// What a schema cannot see: text between elements, and elements without anything in them.
std::string faultOfFrame(const std::string& document) {
    constexpr std::string_view kHead = R"(<?xml version="1.0" encoding="UTF-8"?>)";
    if (!startsWith(document, kHead)) return "no XML declaration at its start";
    std::size_t opened = std::string::npos;  // the end of the tag before, when it opens an element
    for (std::size_t tag = document.find("<Inventory"); tag != std::string::npos;) {
        const std::size_t end = document.find('>', tag);
        std::string here = document.substr(tag, 80);
        const bool closes = document[tag + 1] == '/';
        const bool isBlank = std::string_view(" \t\r\n").find(document[tag - 1]) != std::string_view::npos;
        if (isBlank && !startsWith(here, "<Inventory")) return "a blank before " + here;
        if (document[tag + 1] == '!' || document[tag + 1] == '?') return here;
        if (closes && opened == tag) return "an empty element before " + here;
        opened = closes ? std::string::npos : end + 1;
        tag = document.find('<', end);
    }
    return "";
}

// Documents of scans in a folder of their own, which xmllint judges all at once: reading the schema takes it
// longest.
class Scans {
  public:
    // Scans with these options more.
    void add(const std::vector<std::string>& options) {
        const std::string output = folder_.path() + "/out" + std::to_string(count_++) + ".xml";
        std::vector<std::string> arguments = {"-c", folder_.file("config", allGroups()), "-o", output};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ScannerRun run = runScanner(arguments);
        ASSERT_EQ(0, run.status) << run.errors;
        EXPECT_EQ("", faultOfFrame(readFile(output))) << output;
    }
    std::string complaint() const { return judge(quoted(folder_.path()) + "/*.xml"); }

  private:
    TemporaryFolder folder_;
    int count_ = 0;
};

std::string inventory(const std::string& instances) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Inventory>" + instances + "</Inventory>";
}

TEST(OutputSchema, IsWhatTheDocumentOfFieldsSays) {
    if (shell("python3 --version").status != 0) GTEST_SKIP() << "python3 is not installed";
    const ShellResult result = shell(ZUK_SOURCE_DIR "/tools/make_hw_schemas --check");
    EXPECT_EQ(0, result.status) << result.err;
}

TEST(OutputSchema, HoldsForAScanOfThisMachine) {
    SKIP_WITHOUT_JUDGE();
    Scans scans;
    scans.add({});
    EXPECT_EQ("", scans.complaint());
}

TEST(OutputSchema, HoldsForTheExpectedDocumentOfEveryMachineCase) {
    SKIP_WITHOUT_JUDGE();
    EXPECT_EQ("", judge(quoted(ZUK_SOURCE_DIR "/tests/machines") + "/*.xml"));
}

class OutputSchemaOfCaptures : public testing::TestWithParam<const char*> {};

TEST_P(OutputSchemaOfCaptures, Holds) {
    SKIP_WITHOUT_JUDGE();
    SKIP_WITHOUT_CAPTURES();
    Scans scans;
    for (const std::string& name : captureNames(GetParam())) {
        SCOPED_TRACE(name);
        scans.add({"--root", Capture(name).root()});
    }
    EXPECT_EQ("", scans.complaint());
}

INSTANTIATE_TEST_SUITE_P(Captures, OutputSchemaOfCaptures,
                         testing::Values("hwloc", "lsblk", "lscpu", "lsmem", "osrelease", "rpmdb", "smbios",
                                         "sysroot", "virt"));

TEST(OutputSchema, HoldsForEveryCapturedDisplay) {
    SKIP_WITHOUT_JUDGE();
    SKIP_WITHOUT_CAPTURES();
    const TemporaryFolder root;
    int number = 0;
    for (const auto& entry : std::filesystem::directory_iterator(capturesFolder() + "/edid")) {
        const std::string connector = root.path() + "/sys/class/drm/card0-DP-" + std::to_string(++number);
        std::filesystem::create_directories(connector);
        std::filesystem::copy_file(entry.path(), connector + "/edid");
        std::ofstream(connector + "/status") << "connected\n";
    }
    Scans scans;
    scans.add({"--root", root.path()});
    EXPECT_EQ("", scans.complaint());
}

TEST(OutputSchema, HoldsForARootWithoutFiles) {
    SKIP_WITHOUT_JUDGE();
    const TemporaryFolder root;
    Scans scans;
    scans.add({"--root", root.path()});
    EXPECT_EQ("", scans.complaint());
}

TEST(OutputFrame, RefusesWhatASchemaDoesNotSee) {
    EXPECT_EQ("", faultOfFrame(inventory("<Memory><TotalBytes>1</TotalBytes></Memory>")));
    EXPECT_NE("", faultOfFrame("<Inventory></Inventory>"));
    for (const char* instances :
         {"<Memory> <TotalBytes>1</TotalBytes></Memory>", "<Memory><TotalBytes>1</TotalBytes>\n</Memory>",
          "<Memory></Memory>", "<Memory><TotalBytes></TotalBytes></Memory>", "<!-- x -->", "<?x?>"}) {
        EXPECT_NE("", faultOfFrame(inventory(instances))) << instances;
    }
}

TEST(OutputSchema, RefusesWhatTheScannerMustNotWrite) {
    SKIP_WITHOUT_JUDGE();
    const TemporaryFolder folder;
    const std::string good = "<Memory><TotalBytes>1024</TotalBytes><NumaNodes>1</NumaNodes></Memory>";
    ASSERT_EQ("", judge(folder.file("good.xml", inventory(good))));
    const char* bad[] = {
        "<Memory unit=\"kB\"><TotalBytes>1</TotalBytes></Memory>",  // no attributes
        "<Memory><TotalBytes unit=\"kB\">1</TotalBytes></Memory>",
        "<Memory>1<TotalBytes>1</TotalBytes></Memory>",    // an instance has no text of its own
        "<Memory><TotalBytes><a/></TotalBytes></Memory>",  // a field has nothing else
        "<Memory><TotalBytes></TotalBytes></Memory>",      // unknown is absent
        "<Memory><TotalBytes>0x400</TotalBytes></Memory>",
        "<Memory><TotalBytes>0400</TotalBytes></Memory>",
        "<Memory><TotalBytes>-1</TotalBytes></Memory>",
        "<Memory><TotalBytes>1</TotalBytes><TotalBytes>1</TotalBytes></Memory>",  // a name once
        "<Memory><NumaNodes>1</NumaNodes><TotalBytes>1</TotalBytes></Memory>",    // in the document's order
        "<Memory><Colour>red</Colour></Memory>",
        "<Memory><TotalBytes>1</TotalBytes></Memory><Memory><TotalBytes>1</TotalBytes></Memory>",
        "<Memory><TotalBytes>1</TotalBytes></Memory><Processor><Index>0</Index></Processor>",
        "<Processor><Online>true</Online></Processor>",  // without its key
        "<Processor><Index>0</Index><Online>TRUE</Online></Processor>",
        "<Processor><Index>0</Index><Model> Fast</Model></Processor>",  // blanks are trimmed
        "<Processor><Index>0</Index><Model>Very  fast</Model></Processor>",
        "<PCIDevice><Address>0000:00:02.0</Address><VendorId>0x8086</VendorId></PCIDevice>",
        "<PCIDevice><Address>0000:00:02.0</Address><VendorId>8086A</VendorId></PCIDevice>",
        "<PCIDevice><Address>0000:00:02.0</Address><VendorId>10DE</VendorId></PCIDevice>",
        ("<NetworkAdapter><InterfaceName>a</InterfaceName><Kind>Ethernet</Kind>"
         "<MacAddress>00:00:5E:00:53:01</MacAddress></NetworkAdapter>"),
        "<PCSystemParams><BiosDate>01/02/2020</BiosDate></PCSystemParams>",
        "<OperatingSystem><BootTime>2026-11-20 22:05:45</BootTime></OperatingSystem>",
        "<OperatingSystem><BootTime>2026-13-20T22:05:45Z</BootTime></OperatingSystem>",
        "<NetworkAdapter><InterfaceName>a</InterfaceName><Kind>Toaster</Kind></NetworkAdapter>",
        "<WinCluster><Name>x</Name></WinCluster>",  // does not exist on Linux
    };
    std::string files;
    for (std::size_t i = 0; i < std::size(bad); ++i) {
        files += ' ' + quoted(folder.file(std::to_string(i) + ".bad", inventory(bad[i])));
    }
    const std::string said = judge(files);
    for (std::size_t i = 0; i < std::size(bad); ++i) {
        EXPECT_NE(std::string::npos, said.find('/' + std::to_string(i) + ".bad fails to validate")) << bad[i];
    }
}

}  // namespace
