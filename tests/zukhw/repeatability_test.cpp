// Two scans of an unchanged machine say the same, but for what docs/fields.md marks as volatile.
#include <gtest/gtest.h>

#include <algorithm>

#include "scanners/zukhw/collectors.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "tests/zukhw/documented_fields.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/scanner_run.h"

namespace {

constexpr int kAttempts = 5;  // the machine may change while it is scanned

bool isVolatile(const DocumentedFields& documented, const std::string& group, const std::string& field) {
    const auto found = documented.find(group);
    if (found == documented.end()) return false;
    return std::any_of(found->second.begin(), found->second.end(),
                       [&](const DocumentedField& row) { return row.name == field && row.isVolatile; });
}

// A line for each value that has to stay the same.
std::vector<std::string> stableValues() {
    const TemporaryFolder folder;
    std::vector<std::string> groups;
    for (const Collector& collector : allCollectors()) groups.emplace_back(collector.configName);
    const std::string output = folder.path() + "/out.xml";
    const ScannerRun run = runScanner({"-c", folder.file("config.xml", configFor(groups)), "-o", output});
    if (run.status != 0) throw std::runtime_error(run.errors);
    const DocumentedFields documented = readDocumentedFields();
    std::vector<std::string> values;
    for (const Instance& instance : readInstances(readFile(output))) {
        if (instance.group == "ScanInfo") continue;
        values.push_back(instance.group);
        for (const auto& [field, value] : instance.fields) {
            if (!isVolatile(documented, instance.group, field)) values.push_back(field + '=' + value);
        }
    }
    return values;
}

TEST(Repeatability, TwoScansSayTheSame) {
    std::vector<std::string> before = stableValues();
    std::vector<std::string> after = stableValues();
    for (int attempt = 0; before != after && attempt < kAttempts; ++attempt) {
        before = std::move(after);
        after = stableValues();
    }
    EXPECT_EQ(before, after);
}

}  // namespace
