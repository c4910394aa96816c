// The databases of logins, in the groups LastLoggedUser and UserAccountInfo.
#include <gtest/gtest.h>

#include "tests/support/sqlite_database.h"
#include "tests/zukhw/test_machine.h"

namespace {

const std::string kWtmpTable =
    "CREATE TABLE wtmp(ID INTEGER PRIMARY KEY, Type INTEGER, User TEXT NOT NULL, Login INTEGER, Logout "
    "INTEGER, "
    "TTY TEXT, RemoteHost TEXT, Service TEXT) STRICT;";

// A machine whose database of logins has these rows.
class LoginMachine : public TestMachine {
  public:
    explicit LoginMachine(const std::string& rows, const std::string& tree = "")
        : TestMachine("var/lib/wtmpdb/x: 1\n" + tree) {
        makeDatabase(root() + "/var/lib/wtmpdb/wtmp.db",
                     kWtmpTable + "INSERT INTO wtmp VALUES " + rows + ";");
    }
};

TEST(LastLoggedUser, ComesFromTheDatabase) {
    LoginMachine machine(
        "(1, 1, 'reboot', 1779000000000000, NULL, '~', '6.1', NULL),"
        "(2, 3, 'ada', 1779100000000000, 1779100060000000, 'tty1', NULL, 'login'),"
        "(3, 3, 'ada', 1779200000000000, 1779200060000000, 'tty1', NULL, 'login'),"
        "(4, 3, 'bob', 1779271872000001, 1779271900000000, 'pts/1', '198.51.100.7', 'sshd')",
        "etc/passwd: bob:x:1002:100::/home/bob:/bin/sh\n");
    EXPECT_EQ((Fields{{"UserName", "bob"},
                      {"UserId", "1002"},
                      {"LoginTime", "2026-05-20T10:11:12Z"},
                      {"LogoutTime", "2026-05-20T10:11:40Z"},
                      {"Terminal", "pts/1"},
                      {"RemoteHost", "198.51.100.7"},
                      {"RemoteAddress", "198.51.100.7"},
                      {"StillLoggedIn", "false"},
                      {"SessionKind", "Ssh"},
                      {"Source", "/var/lib/wtmpdb/wtmp.db"},
                      {"PrimaryUser", "ada"}}),
              collectOne(machine, "LastLoggedUser"));
}

TEST(LastLoggedUser, OfTheDatabaseIsLoggedInUntilTheNextStart) {
    const char* login = "(1, 3, 'ada', 1779100000000000, NULL, 'tty1', NULL, 'login')";
    LoginMachine open(login);
    EXPECT_EQ("true", collectOne(open, "LastLoggedUser").at("StillLoggedIn"));
    LoginMachine crashed(std::string(login) + ",(2, 1, 'reboot', 1779271872000000, NULL, '~', '', '')");
    const Fields fields = collectOne(crashed, "LastLoggedUser");
    EXPECT_EQ("false", fields.at("StillLoggedIn"));
    EXPECT_EQ("2026-05-20T10:11:12Z", fields.at("LogoutTime"));
}

TEST(LastLoggedUser, OfADatabaseWithoutLoginsIsNobody) {
    LoginMachine machine("(1, 1, 'reboot', 1779000000000000, NULL, '~', '6.1', NULL)");
    EXPECT_TRUE(collectInstances(*machine, "LastLoggedUser").empty());
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(LastLoggedUser, CountsADatabaseThatIsNone) {
    TestMachine machine("var/lib/wtmpdb/wtmp.db: nonsense\n");
    EXPECT_TRUE(collectInstances(*machine, "LastLoggedUser").empty());
    EXPECT_EQ(1U, machine->sources().malformedCount());
}

struct SessionCase {
    const char* lines;
    const char* kind;
};

TEST(LastLoggedUser, OfASessionHasTheKindThatItTells) {
    const SessionCase cases[] = {{"\tTYPE=wayland\n\tSERVICE=gdm-password\n\tTTY=tty2\n", "Graphical"},
                                 {"\tTYPE=tty\n\tSERVICE=sshd\n\tTTY=pts/0\n", "Ssh"},
                                 {"\tTYPE=tty\n\tSERVICE=login\n\tTTY=tty1\n", "Console"},
                                 {"\tTYPE=unspecified\n\tSERVICE=cron\n", "Other"}};
    for (const SessionCase& c : cases) {
        TestMachine machine(
            "run/systemd/sessions/2:\n\tUSER=bob\n\tCLASS=user\n\tREALTIME=1779271872000001\n" +
            std::string(c.lines));
        EXPECT_EQ(c.kind, collectOne(machine, "LastLoggedUser").at("SessionKind")) << c.lines;
    }
}

TEST(UserAccountInfo, TakesTheLastLoginFromTheDatabase) {
    TestMachine machine(
        "etc/passwd:\n\tada:x:0:100::/home/ada:/bin/sh\n\tbob:x:1:100::/home/bob:/bin/sh\n"
        "\teve:x:2:100::/home/eve:/bin/sh\n"
        "var/lib/lastlog/x: 1\n");
    makeDatabase(
        machine.root() + "/var/lib/lastlog/lastlog2.db",
        "CREATE TABLE Lastlog2(Name TEXT PRIMARY KEY, Time INTEGER, TTY TEXT, RemoteHost TEXT, Service TEXT)"
        " STRICT; INSERT INTO Lastlog2 VALUES ('ada', 1779271872, 'tty1', NULL, 'login'), "
        "('bob', 0, '', NULL, NULL);");
    const std::vector<Fields> users = collectInstances(*machine, "UserAccountInfo");
    ASSERT_EQ(3U, users.size());
    EXPECT_EQ("2026-05-20T10:11:12Z", users[0].at("LastLogin"));
    EXPECT_EQ(0U, users[1].count("LastLogin"));
    EXPECT_EQ(0U, users[2].count("LastLogin"));
}

}  // namespace
