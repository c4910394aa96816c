#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

using testing::HasSubstr;
using testing::StartsWith;

TEST(Groups, AreListedWithTheirNumbers) {
    const ShellResult result = ZukProgram().run("groups");
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_THAT(result.out, StartsWith("  Number  Name\n       1  ComponentID\n       2  Processor\n"));
    EXPECT_THAT(result.out, HasSubstr("\n      51  IPv6Address\n"));
}

TEST(Groups, AsJsonAreAnArrayOfObjects) {
    EXPECT_THAT(ZukProgram().run("groups --json").out,
                StartsWith("[\n  {\"Number\": 1, \"Name\": \"ComponentID\"},\n"));
}

TEST(Groups, LeaveNothingBehind) {
    const ZukProgram zuk;
    zuk.run("groups");
    EXPECT_TRUE(zuk.leftNothingBehind());
}
