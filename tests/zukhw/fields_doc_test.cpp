// docs/fields.md and what the collectors write must agree.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "scanners/zukhw/collectors.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/documented_fields.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/scanner_run.h"

namespace {

// The batteries of a system have a row for all: "Battery2Model" is described as "BatteryNModel".
std::string rowNameOf(const std::string& field) {
    return std::regex_replace(field, std::regex("^Battery[0-9]+"), "BatteryN");
}

// Says what is wrong with the fields of one instance; empty when nothing is.
std::string faultOf(const Instance& instance, const DocumentedFields& documented) {
    const auto group = documented.find(instance.group);
    if (group == documented.end()) return instance.group + " is not documented";
    auto place = group->second.begin();
    for (const auto& [name, value] : instance.fields) {
        const std::string rowName = rowNameOf(name);
        const auto isField = [&](const DocumentedField& row) { return row.name == rowName; };
        const auto from = rowName == name ? place : group->second.begin();
        const auto found = std::find_if(from, group->second.end(), isField);
        if (found == group->second.end())
            return instance.group + '.' + name + " is not documented at this place";
        place = found + 1;
    }
    return "";
}

void expectDocumented(const std::string& document) {
    const DocumentedFields documented = readDocumentedFields();
    for (const Instance& instance : readInstances(document)) EXPECT_EQ("", faultOf(instance, documented));
}

TEST(FieldsDocument, ListsEveryGroupInOrder) {
    std::vector<std::string> expected;
    for (const Collector& collector : allCollectors()) expected.emplace_back(collector.group);
    EXPECT_EQ(expected, documentedGroups());
}

TEST(FieldsDocument, ListsWhatTheTestMachinesGive) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ZUK_SOURCE_DIR) + "/tests/machines")) {
        if (entry.path().extension() == ".xml") expectDocumented(readFile(entry.path().string()));
    }
}

TEST(FieldsDocument, ListsWhatThisMachineGives) {
    const TemporaryFolder folder;
    std::vector<std::string> groups;
    for (const Collector& collector : allCollectors()) groups.emplace_back(collector.configName);
    const std::string output = folder.path() + "/out.xml";
    const ScannerRun run = runScanner({"-c", folder.file("config.xml", configFor(groups)), "-o", output});
    ASSERT_EQ(0, run.status) << run.errors;
    expectDocumented(readFile(output));
}

}  // namespace
