// The codes for records that could not be allocated.
#include <gtest/gtest.h>

#include "tests/support/failing_new.h"
#include "tests/support/hardware_fixture.h"

namespace {

using NoMemory = LibraryFixture;

TEST_F(NoMemory, LibraryContextIs5) {
    ZUKCtx* untouched = library;
    const FailingNew none(0);
    EXPECT_EQ(5, ZUK_init("t", nullptr, nullptr, widen(temp()).c_str(), L"/home", &untouched));
    EXPECT_EQ(library, untouched);
}

TEST_F(NoMemory, LibraryContextsLoggerIs4) {
    ZUKCtx* untouched = library;
    const FailingNew recordOnly(1);
    EXPECT_EQ(4, ZUK_init("t", nullptr, nullptr, widen(temp()).c_str(), L"/home", &untouched));
    EXPECT_EQ(library, untouched);
}

TEST_F(NoMemory, HardwareContextIs5AndTheOutputNull) {
    auto* ctx = reinterpret_cast<ZUKHwCtx*>(&folder);
    const FailingNew none(0);
    EXPECT_EQ(5, ZUK_hw_init(library, nullptr, nullptr, &ctx));
    EXPECT_EQ(nullptr, ctx);
}

TEST_F(NoMemory, SoftwareContextIs5AndTheOutputNull) {
    auto* ctx = reinterpret_cast<ZUKSwCtx*>(&folder);
    const FailingNew none(0);
    EXPECT_EQ(5, ZUK_sw_init(library, nullptr, nullptr, &ctx));
    EXPECT_EQ(nullptr, ctx);
}

}  // namespace
