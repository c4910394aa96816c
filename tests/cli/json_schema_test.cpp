// What "zuk hw --json" and "zuk sw --json" print against their schemas, judged by Python's jsonschema.
#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "tests/cli/zuk_program.h"

namespace {

#define SKIP_WITHOUT_JUDGE()                                   \
    if (shell("python3 -c 'import jsonschema'").status != 0) { \
        GTEST_SKIP() << "python3-jsonschema is not installed"; \
    }

// What is wrong with each of the texts by the schema of that name, one line each: empty when it is valid.
std::vector<std::string> complaints(const std::vector<std::string>& texts,
                                    const std::string& schema = "zuk-hw") {
    const TemporaryFolder folder;
    const std::string judge = folder.file("judge.py", R"(import json, jsonschema, sys
schema, *texts = (json.load(open(name)) for name in sys.argv[1:])
jsonschema.Draft202012Validator.check_schema(schema)
for text in texts:
    errors = jsonschema.Draft202012Validator(schema).iter_errors(text)
    print(next((repr(f'{list(error.absolute_path)}: {error.message}') for error in errors), ''))
)");
    std::string command =
        "python3 " + quoted(judge) + " " ZUK_SOURCE_DIR "/schemas/" + schema + ".schema.json";
    for (std::size_t i = 0; i < texts.size(); ++i) {
        command += ' ' + quoted(folder.file(std::to_string(i), texts[i]));
    }
    const ShellResult result = shell(command);
    if (result.status != 0) return {result.err};
    std::vector<std::string> found;
    std::istringstream out(result.out);
    for (std::string line; std::getline(out, line);) found.push_back(line);
    return found;
}

}  // namespace

TEST(JsonSchema, HoldsForThisMachine) {
    SKIP_WITHOUT_JUDGE();
    const ZukProgram zuk;
    const ShellResult result = zuk.run("hw --json");
    ASSERT_EQ(0, result.status) << result.err;
    EXPECT_EQ(std::vector<std::string>{""}, complaints({result.out}));
}

TEST(JsonSchema, HoldsForTypesThatThisMachineMayLack) {
    SKIP_WITHOUT_JUDGE();
    const ZukProgram zuk;
    zuk.installScannerThatFinds(
        "<PhysicalProcessor><Populated>true</Populated><NumaNodes>0; 1</NumaNodes><Flags>fpu vme</Flags>"
        "</PhysicalProcessor><PCSystemParams><Battery2Cycles>17</Battery2Cycles><NumaNodes>2</NumaNodes>"
        "</PCSystemParams><UnixCpuMeter><Load1>0.25</Load1></UnixCpuMeter>");
    EXPECT_EQ(std::vector<std::string>{""}, complaints({zuk.runHw("--json").out}));
}

TEST(JsonSchema, RefusesOtherTypes) {
    SKIP_WITHOUT_JUDGE();
    const std::vector<std::string> bad = {
        R"({"Memory": [{"TotalBytes": "1024"}]})",
        R"({"Memory": [{"TotalBytes": -1}]})",
        R"({"Memory": [{"TotalBytes": 1.5}]})",
        R"({"Memory": [{"Colour": "red"}]})",
        R"({"Memory": [{}]})",
        R"({"Memory": [{"TotalBytes": 1}, {"TotalBytes": 1}]})",
        R"({"Memory": {"TotalBytes": 1}})",
        R"({"Processor": [{"Online": true}]})",
        R"({"Processor": [{"Index": 0, "Online": "true"}]})",
        R"({"OperatingSystem": [{"VersionId": 12}]})",
        R"({"PhysicalProcessor": [{"Populated": true, "NumaNodes": ["0"]}]})",
        R"({"PhysicalProcessor": [{"Populated": true, "Flags": "fpu vme"}]})",
        R"({"WinCluster": [{"Name": "x"}]})",
        R"({"Toaster": []})",
    };
    const std::vector<std::string> found = complaints(bad);
    ASSERT_EQ(bad.size(), found.size()) << found.at(0);
    for (std::size_t i = 0; i < bad.size(); ++i) EXPECT_NE("", found[i]) << bad[i];
}

TEST(JsonSchema, HoldsForTheShippedCatalogue) {
    SKIP_WITHOUT_JUDGE();
    const ZukProgram zuk;
    const ShellResult result =
        zuk.run("sw --json --set nobody=takes --plugin search.Root=" + zuk.path("home"));
    ASSERT_EQ(0, result.status) << result.err;
    EXPECT_NE(std::string::npos, result.out.find("preset-unused"));
    EXPECT_EQ(std::vector<std::string>{""}, complaints({result.out}, "zuk-sw"));
}

TEST(JsonSchema, HoldsForResultsAndWarningsOfAllSorts) {
    SKIP_WITHOUT_JUDGE();
    const ZukProgram zuk;
    zuk.installSoftwareScannerThatFinds(
        "<MatchedSignature guid='g' name='n'/><MatchedSignature guid='h' name='n'><Variable name='v' "
        "value=''/>"
        "<Metadata>&#233;<Evidence/></Metadata></MatchedSignature>",
        "<Event code='denied' severity='info' count='12' guid='g' path='/p'>&#x9b;</Event>"
        "<Event code='cycle' severity='error' count='1'/>");
    const std::string file = zuk.folder().file("s.xml", "<Signatures/>");
    EXPECT_EQ(std::vector<std::string>{""}, complaints({zuk.runSw("--json " + file).out}, "zuk-sw"));
}

TEST(JsonSchema, RefusesOtherResults) {
    SKIP_WITHOUT_JUDGE();
    const std::vector<std::string> bad = {
        R"({})",
        R"({"results": []})",
        R"({"results": [], "warnings": [], "more": 1})",
        R"({"results": [{"guid": "g", "name": "n", "variables": {}}], "warnings": []})",
        R"({"results": [{"guid": "", "name": "n", "variables": {}, "metadata": ""}], "warnings": []})",
        R"({"results": [{"guid": "g", "name": "n", "variables": {"v": 1}, "metadata": ""}], "warnings": []})",
        R"({"results": [{"guid": "g", "name": "n", "variables": {"": "1"}, "metadata": ""}], "warnings": []})",
        R"({"results": [], "warnings": [{"code": "strange", "severity": "info", "count": 1, "text": ""}]})",
        R"({"results": [], "warnings": [{"code": "denied", "severity": "fatal", "count": 1, "text": ""}]})",
        R"({"results": [], "warnings": [{"code": "denied", "severity": "info", "count": 0, "text": ""}]})",
        R"({"results": [], "warnings": [{"code": "denied", "severity": "info", "count": 1}]})",
    };
    const std::vector<std::string> found = complaints(bad, "zuk-sw");
    ASSERT_EQ(bad.size(), found.size()) << found.at(0);
    for (std::size_t i = 0; i < bad.size(); ++i) EXPECT_NE("", found[i]) << bad[i];
}
