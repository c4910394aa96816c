// The documents that the scanner writes against schemas/zukhw-output.xsd, judged by xmllint.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "scanners/zukhw/collectors.h"
#include "tests/support/files.h"
#include "tests/support/xml_schema.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/scanner_run.h"

namespace {

#define SKIP_WITHOUT_JUDGE() \
    if (!haveXmllint()) GTEST_SKIP() << "xmllint is not installed"

std::string complaint(const std::string& files) {
    return schemaComplaint("zukhw-output.xsd", files);
}

std::string allGroups() {
    std::vector<std::string> groups;
    for (const Collector& collector : allCollectors()) groups.emplace_back(collector.configName);
    return configFor(groups);
}

// What a schema cannot see: text between elements, and instances without a field.
std::string faultOfFrame(const std::string& document) {
    static const std::string kHead = R"(<?xml version="1.0" encoding="UTF-8"?>)";
    std::smatch found;
    if (document.compare(0, kHead.size(), kHead) != 0) return "no XML declaration at its start";
    const std::string body = document.substr(document.find("<Inventory"));
    if (std::regex_search(body, found, std::regex(">[ \t\r\n]+<")))
        return "white space: " + found.suffix().str();
    if (std::regex_search(body, found, std::regex("<(\\w+)></\\1>|<\\w+/>|<!|<\\?"))) return found.str();
    return "";
}

// Scans with these options more and gives what is wrong with the document.
std::string faultOfScan(const std::vector<std::string>& options) {
    const TemporaryFolder folder;
    const std::string output = folder.path() + "/out.xml";
    std::vector<std::string> arguments = {"-c", folder.file("config.xml", allGroups()), "-o", output};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ScannerRun run = runScanner(arguments);
    if (run.status != 0) return run.errors;
    const std::string fault = faultOfFrame(readFile(output));
    return fault.empty() ? complaint(quoted(output)) : fault;
}

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
    EXPECT_EQ("", faultOfScan({}));
}

TEST(OutputSchema, HoldsForTheExpectedDocumentOfEveryMachineCase) {
    SKIP_WITHOUT_JUDGE();
    EXPECT_EQ("", complaint(quoted(ZUK_SOURCE_DIR "/tests/machines") + "/*.xml"));
}

TEST(OutputSchema, HoldsForEveryCapturedMachine) {
    SKIP_WITHOUT_JUDGE();
    SKIP_WITHOUT_CAPTURES();
    for (const auto& folder : std::filesystem::directory_iterator(capturesFolder())) {
        for (const std::string& name : captureNames(folder.path().filename().string())) {
            EXPECT_EQ("", faultOfScan({"--root", Capture(name).root()})) << name;
        }
    }
}

TEST(OutputSchema, HoldsForARootWithoutFiles) {
    SKIP_WITHOUT_JUDGE();
    const TemporaryFolder root;
    EXPECT_EQ("", faultOfScan({"--root", root.path()}));
}

TEST(OutputSchema, RefusesWhatTheScannerMustNotWrite) {
    SKIP_WITHOUT_JUDGE();
    const TemporaryFolder folder;
    const std::string good = "<Memory><TotalBytes>1024</TotalBytes><NumaNodes>1</NumaNodes></Memory>";
    ASSERT_EQ("", complaint(folder.file("good.xml", inventory(good))));
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
        "<NetworkAdapter><InterfaceName>a</InterfaceName><Kind>Ethernet</Kind><MacAddress>00:00:5E:00:53:01"
        "</MacAddress></NetworkAdapter>",
        "<PCSystemParams><BiosDate>01/02/2020</BiosDate></PCSystemParams>",
        "<OperatingSystem><BootTime>2026-11-20 22:05:45</BootTime></OperatingSystem>",
        "<OperatingSystem><BootTime>2026-13-20T22:05:45Z</BootTime></OperatingSystem>",
        "<NetworkAdapter><InterfaceName>a</InterfaceName><Kind>Toaster</Kind></NetworkAdapter>",
        "<WinCluster><Name>x</Name></WinCluster>",  // does not exist on Linux
    };
    for (const char* instances : bad) {
        EXPECT_NE("", complaint(folder.file("bad.xml", inventory(instances)))) << instances;
    }
}

}  // namespace
