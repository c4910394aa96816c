// Users, groups and passwords, and the group UserAccountInfo made of them.
#include "scanners/zukhw/accounts.h"

#include <gtest/gtest.h>

#include "scanners/zukhw/last_logins.h"
#include "scanners/zukhw/shadow.h"
#include "tests/zukhw/test_machine.h"

namespace {

const std::string kUsers =
    "etc/passwd:\n"
    "\tada:x:1001:100:Ada L.,Room 1,,:/home/ada:/bin/bash\n"
    "\troot:x:0:0:root:/root:/bin/sh\n"
    "\tdaemon:*:2:2::/:/usr/sbin/nologin\n"
    "etc/group:\n"
    "\troot:x:0:\n"
    "\tusers:x:100:\n"
    "\twheel:x:10:bob,ada\n"
    "\taudio:x:29:ada\n";

TEST(UserAccountInfo, ComesByNumber) {
    TestMachine machine(kUsers +
                        "etc/shadow:\n"
                        "\tada:$6$salt$hash:19000:0:99999:7::20000:\n"
                        "\troot:!$6$salt$hash:0:0::7:::\n");
    const std::vector<Fields> users = collectInstances(*machine, "UserAccountInfo");
    ASSERT_EQ(3U, users.size());
    EXPECT_EQ((Fields{{"Name", "root"},
                      {"UserId", "0"},
                      {"GroupId", "0"},
                      {"GroupName", "root"},
                      {"FullName", "root"},
                      {"Home", "/root"},
                      {"Shell", "/bin/sh"},
                      {"System", "true"},
                      {"LoginAllowed", "true"},
                      {"PasswordState", "Locked"},
                      {"Privileged", "true"}}),
              users[0]);
    EXPECT_EQ((Fields{{"Name", "daemon"},
                      {"UserId", "2"},
                      {"GroupId", "2"},
                      {"Home", "/"},
                      {"Shell", "/usr/sbin/nologin"},
                      {"System", "true"},
                      {"LoginAllowed", "false"},
                      {"PasswordState", "None"},
                      {"Privileged", "false"}}),
              users[1]);
    EXPECT_EQ((Fields{{"Name", "ada"},
                      {"UserId", "1001"},
                      {"GroupId", "100"},
                      {"GroupName", "users"},
                      {"FullName", "Ada L."},
                      {"Home", "/home/ada"},
                      {"Shell", "/bin/bash"},
                      {"System", "false"},
                      {"LoginAllowed", "true"},
                      {"Groups", "audio; wheel"},
                      {"PasswordState", "Set"},
                      {"PasswordChanged", "2022-01-08"},
                      {"AccountExpires", "2024-10-04"},
                      {"PasswordMaxDays", "99999"},
                      {"Privileged", "true"}}),
              users[2]);
}

TEST(UserAccountInfo, NeverTellsAPassword) {
    TestMachine machine(kUsers + "etc/shadow:\n\tada:$6$salt$SECRET:19000:0:99999:7:::\n");
    EXPECT_EQ(std::string::npos, collectXml(*machine, "UserAccountInfo").find("SECRET"));
}

TEST(UserAccountInfo, IsASystemUserBelowTheLowestNumberOfPersons) {
    TestMachine machine("etc/passwd: a:x:500:1::/:/bin/sh\netc/login.defs:\n\t# UID_MIN 9\n\tUID_MIN\t500\n");
    EXPECT_EQ("false", collectOne(machine, "UserAccountInfo").at("System"));
    TestMachine nobody("etc/passwd: nobody:x:65534:1::/:/bin/sh\n");
    EXPECT_EQ("true", collectOne(nobody, "UserAccountInfo").at("System"));
}

TEST(Accounts, SkipAndCountBrokenLines) {
    TestMachine machine(
        "etc/passwd:\n"
        "\ta:x:1:1::/\n"
        "\tb:x:-1:1::/:/bin/sh\n"
        "\tc:x:4294967296:1::/:/bin/sh\n"
        "\t:x:1:1::/:/bin/sh\n"
        "\t+::::::\n"
        "\td:x:4294967295:1::/:/bin/sh\n"
        "etc/group:\n\tx:y:z\n");
    const Accounts accounts(*machine);
    ASSERT_EQ(1U, accounts.users().size());
    EXPECT_EQ("d", accounts.users()[0].name);
    EXPECT_EQ(5U, machine->sources().malformedCount());
}

struct StateCase {
    const char* field;
    PasswordState state;
};

TEST(PasswordState, IsToldByTheFormOfTheField) {
    const StateCase cases[] = {{"", PasswordState::Empty},    {"*", PasswordState::None},
                               {"!", PasswordState::Locked},  {"!!", PasswordState::Locked},
                               {"!*", PasswordState::Locked}, {"!$y$x", PasswordState::Locked},
                               {"$y$x", PasswordState::Set},  {"abJnggxhB/yWI", PasswordState::Set}};
    for (const StateCase& c : cases) EXPECT_EQ(c.state, passwordState(c.field)) << c.field;
}

// A file of records of which only that of user 1 is filled.
std::string lastlog(const std::string& path, std::size_t recordSize, const std::string& time) {
    std::string hex = path + " =";
    for (std::size_t i = 0; i < recordSize; ++i) hex += " 00";
    hex += ' ' + time;
    for (std::size_t i = (time.size() + 1) / 3; i < recordSize; ++i) hex += " 00";
    return hex + '\n';
}

TEST(LastLogins, HaveARecordForEveryUserNumber) {
    TestMachine machine(lastlog("var/log/lastlog", 292, "01 02 03 04"));
    LastLogins logins(*machine);
    EXPECT_FALSE(logins.of(0, "ada"));
    EXPECT_EQ(0x04030201, logins.of(1, "ada"));
    EXPECT_FALSE(logins.of(2, "ada"));
    EXPECT_FALSE(logins.of(UINT32_MAX, "ada"));
}

TEST(LastLogins, AreWiderWhereTimesAre) {
    TestMachine machine(lastlog("var/log/lastlog", 296, "01 02 03 04 05 00 00 00"));
    EXPECT_EQ(0x0504030201, LastLogins(*machine).of(1, "ada"));
}

}  // namespace
