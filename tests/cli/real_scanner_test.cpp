#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/cli/zuk_program.h"

using testing::HasSubstr;

namespace {

// The machine's memory as the kernel tells it.
long long kernelMemoryBytes() {
    std::ifstream file("/proc/meminfo");
    std::string name;
    long long kibibytes = 0;
    file >> name >> kibibytes;
    return kibibytes * 1024;
}

}  // namespace

TEST(RealScanner, TellsTheTrueMemoryOfThisMachine) {
    const ZukProgram zuk;
    const ShellResult result = zuk.run("hw --json memory");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_THAT(result.out, HasSubstr("\"TotalBytes\": " + std::to_string(kernelMemoryBytes()) + ","));
    EXPECT_TRUE(zuk.leftNothingBehind());
}
