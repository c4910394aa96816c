// What groups share of a machine.
#include "scanners/zukhw/machine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

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

// For as long as it lives, where the tests run as root; others are ordinary users anyway.
class OrdinaryUser {
  public:
    OrdinaryUser() : dropped_(::geteuid() == 0 && ::seteuid(kNobody) == 0) {}
    ~OrdinaryUser() {
        if (dropped_ && ::seteuid(0) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  private:
    static constexpr uid_t kNobody = 65534;
    bool dropped_;
};

TEST(Machine, CountsAFileInAClosedFolderAsDenied) {
    namespace fs = std::filesystem;
    TestMachine machine("closed/file: x\n");
    fs::permissions(machine.root() + "/closed", fs::perms::none);
    {
        const OrdinaryUser user;
        EXPECT_FALSE(machine->exists("closed/file"));
    }
    fs::permissions(machine.root() + "/closed", fs::perms::owner_all);
    EXPECT_EQ(1U, machine->sources().deniedCount());
}

TEST(Machine, CountsAFileThatIsNotThereAsNotDenied) {
    TestMachine machine("open/\n");
    EXPECT_FALSE(machine->exists("open/file"));
    EXPECT_EQ(0U, machine->sources().deniedCount());
}

}  // namespace
