// Runs the built scanner on every machine of tests/machines: NAME.case says which tree to plant, with which
// archive of more files in it, or which archive of tools/capture_machine to unpack, which groups to ask for
// and which document must come out.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/machine_tree.h"
#include "tests/zukhw/scanner_run.h"

namespace {

const std::string kMachines = std::string(ZUK_SOURCE_DIR) + "/tests/machines/";

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kMachines)) {
        if (entry.path().extension() == ".case") names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// One element a line, as expected documents are written; the scanner writes no white space between elements.
// A difference then shows as a line.
std::string oneElementALine(const std::string& xml) {
    std::string out;
    for (const std::string_view line : lines(xml)) {
        for (const std::string_view element : split(trim(line), '>')) {
            if (startsWith(element, "<") && !startsWith(element, "</") && !out.empty()) out += '\n';
            out += element;
            if (!element.empty()) out += '>';
        }
    }
    return out;
}

std::string valueOf(const std::string& description, const char* key) {
    return std::string(findValue(description, key, ':').value_or(""));
}

void unpack(const std::string& archive, const std::string& folder) {
    const ShellResult unpacked = shell("tar -xf " + quoted(kMachines + archive) + " -C " + quoted(folder));
    if (unpacked.status != 0) throw std::runtime_error(unpacked.err);
}

// Makes the machine's files below the folder and gives their root.
std::string makeMachine(const std::string& description, const std::string& folder) {
    const std::string archive = valueOf(description, "root");
    if (!archive.empty()) {
        unpack(archive, folder);
        return folder + '/' + archive.substr(0, archive.find(".tar"));
    }
    std::string root = folder + "/root";
    std::filesystem::create_directory(root);
    plantMachine(readFile(kMachines + valueOf(description, "tree")), root);
    const std::string more = valueOf(description, "more-files");
    if (!more.empty()) unpack(more, root);
    return root;
}

class MachineCase : public testing::TestWithParam<std::string> {};

TEST_P(MachineCase, GivesTheExpectedDocument) {
    const std::string description = readFile(kMachines + GetParam() + ".case");
    const TemporaryFolder folder;
    const std::string root = makeMachine(description, folder.path());
    std::vector<std::string> groups;
    const std::string groupList = valueOf(description, "groups");
    for (const std::string_view group : split(groupList, ',')) groups.emplace_back(trim(group));
    const std::string output = folder.path() + "/out.xml";
    std::vector<std::string> arguments = {
        "-c", folder.file("config.xml", configFor(groups)), "-o", output, "--root", root};
    const std::string signature = valueOf(description, "cpuid-signature");
    if (!signature.empty()) arguments.insert(arguments.end(), {"--cpuid-signature", signature});

    const ScannerRun run = runScanner(arguments);

    ASSERT_EQ(0, run.status) << run.errors;
    EXPECT_EQ("", run.output);
    const std::string expected = readFile(kMachines + valueOf(description, "expect"));
    EXPECT_EQ(oneElementALine(expected), oneElementALine(readFile(output)));
}

INSTANTIATE_TEST_SUITE_P(Machines, MachineCase, testing::ValuesIn(caseNames()), [](const auto& row) {
    std::string name = row.param;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; },
        '_');
    return name;
});

}  // namespace
