// What groups share of a machine.
#include "scanners/zukhw/machine.h"

#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

struct DeniedSource {
    explicit DeniedSource(Machine& machine) { machine.sources().denied("etc/secret"); }
};

struct OpenSource {
    explicit OpenSource(Machine& /*machine*/) {}
};

// Whether a group that was left empty is "Denied" must not depend on who read the source first.
TEST(Machine, RemembersForEveryGroupThatASharedSourceWasDenied) {
    TestMachine machine("etc/\n");
    machine->shared<DeniedSource>();
    const std::size_t before = machine->sources().denials();
    machine->shared<DeniedSource>();
    EXPECT_EQ(before + 1, machine->sources().denials());
    EXPECT_EQ(1U, machine->sources().deniedCount());
}

TEST(Machine, TellsNoDenialOfASharedSourceThatCouldBeRead) {
    TestMachine machine("etc/\n");
    machine->shared<OpenSource>();
    machine->shared<OpenSource>();
    EXPECT_EQ(0U, machine->sources().denials());
}

}  // namespace
