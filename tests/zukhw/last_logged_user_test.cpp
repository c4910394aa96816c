// The file of logins, and the group LastLoggedUser made of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scanners/zukhw/login_history.h"
#include "scanners/zukhw/wtmp.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;

void put(std::string* record, std::size_t offset, std::string_view bytes) {
    record->replace(offset, bytes.size(), bytes);
}

std::string number(std::uint64_t value, std::size_t width, bool bigEndian) {
    std::string bytes;
    for (std::size_t i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i));
    if (bigEndian) bytes.assign(bytes.rbegin(), bytes.rend());
    return bytes;
}

struct Made {
    int type;
    const char* user;
    const char* line;
    std::int64_t time;
    const char* host = "";
};

std::string recordBytes(const Made& made, const LoginRecordLayout& layout = {}) {
    std::string record(layout.size, '\0');
    put(&record, 0, number(static_cast<std::uint64_t>(made.type), 2, layout.bigEndian));
    put(&record, 8, made.line);
    put(&record, 44, made.user);
    put(&record, 76, made.host);
    put(&record, layout.wideTimes ? 344 : 340,
        number(static_cast<std::uint64_t>(made.time), layout.wideTimes ? 8 : 4, layout.bigEndian));
    return record;
}

std::string fileBytes(const std::vector<Made>& records, const LoginRecordLayout& layout = {}) {
    std::string bytes;
    for (const Made& made : records) bytes += recordBytes(made, layout);
    return bytes;
}

std::string hexOf(const std::string& bytes) {
    std::string hex;
    for (const char c : bytes) {
        constexpr char kDigits[] = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(c);
        hex += {' ', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return hex;
}

constexpr int kBoot = LoginRecord::kBootTime;
constexpr int kUser = LoginRecord::kUser;
constexpr int kDead = LoginRecord::kDead;

TEST(LoginRecords, AreReadInEveryLayout) {
    const LoginRecordLayout layouts[] = {
        {384, false, false}, {384, false, true}, {400, true, false}, {400, true, true}};
    for (const LoginRecordLayout& layout : layouts) {
        const std::string bytes =
            fileBytes({{kBoot, "reboot", "~", 5}, {kUser, "ada", "pts/0", 1779271872, "far"}}, layout);
        const LoginRecordLayout found = findLoginRecordLayout(bytes);
        EXPECT_EQ(layout.size, found.size);
        EXPECT_EQ(layout.bigEndian, found.bigEndian);
        const std::vector<LoginRecord> records = parseLoginRecords(bytes, found);
        ASSERT_EQ(2U, records.size());
        EXPECT_EQ(kUser, records[1].type);
        EXPECT_EQ("ada", records[1].user);
        EXPECT_EQ("pts/0", records[1].line);
        EXPECT_EQ("far", records[1].host);
        EXPECT_EQ(1779271872, records[1].time);
    }
}

TEST(LoginRecords, TellTheAddressInEitherFamily) {
    std::string four = recordBytes({kUser, "ada", "pts/0", 1});
    std::string six = four;
    put(&four, 348, "\xC6\x29\x01\x04");
    put(&six, 348, std::string_view("\x20\x01\x0d\xb8\0\0\0\0\0\0\0\0\0\0\0\x01", 16));
    EXPECT_EQ("198.41.1.4", parseLoginRecords(four, {})[0].address);
    EXPECT_EQ("2001:db8::1", parseLoginRecords(six, {})[0].address);
}

TEST(LoginRecords, AreWholeOrNone) {
    const std::string record = recordBytes({kUser, "ada", "pts/0", 1});
    for (std::size_t size = 0; size < record.size(); ++size) {
        EXPECT_TRUE(parseLoginRecords(record.substr(0, size), {}).empty());
    }
    EXPECT_EQ(LoginRecord::kEmpty, parseLoginRecords(std::string(384, '\xFF'), {})[0].type);
}

std::vector<Login> loginsOf(const std::vector<Made>& made) {
    return findLogins(parseLoginRecords(fileBytes(made), {}));
}

TEST(Logins, EndWithTheirTerminalOrTheSystem) {
    const std::vector<Login> logins = loginsOf({{kUser, "crashed", "tty1", 10},
                                                {kBoot, "reboot", "~", 20},
                                                {kUser, "replaced", "tty2", 30},
                                                {kUser, "ended", "tty2", 40},
                                                {kUser, "open", "tty3", 50},
                                                {kUser, "", "tty4", 55},
                                                {kDead, "", "tty2", 60}});
    ASSERT_EQ(4U, logins.size());
    EXPECT_EQ("open", logins[0].record.user);
    EXPECT_TRUE(logins[0].open);
    EXPECT_EQ("ended", logins[1].record.user);
    EXPECT_EQ(60, logins[1].ended);
    EXPECT_EQ("replaced", logins[2].record.user);
    EXPECT_EQ(40, logins[2].ended);
    EXPECT_EQ("crashed", logins[3].record.user);
    EXPECT_EQ(20, logins[3].ended);
    EXPECT_FALSE(logins[3].open);
}

TEST(LastLoggedUser, IsTheNewestOfTheFile) {
    const std::string file = fileBytes({{kUser, "ada", "tty1", 1779000000},
                                        {kUser, "ada", "tty2", 1779100000},
                                        {kUser, "bob", "pts/1", 1779271872, "far.example"},
                                        {kDead, "", "pts/1", 1779271900}});
    TestMachine machine("var/log/wtmp =" + hexOf(file) + "\netc/passwd: bob:x:1002:100::/home/bob:/bin/sh\n");
    EXPECT_EQ((Fields{{"UserName", "bob"},
                      {"UserId", "1002"},
                      {"LoginTime", "2026-05-20T10:11:12Z"},
                      {"LogoutTime", "2026-05-20T10:11:40Z"},
                      {"Terminal", "pts/1"},
                      {"RemoteHost", "far.example"},
                      {"StillLoggedIn", "false"},
                      {"SessionKind", "Ssh"},
                      {"Source", "/var/log/wtmp"},
                      {"PrimaryUser", "ada"}}),
              collectOne(machine, "LastLoggedUser"));
}

TEST(LastLoggedUser, ComesFromANewerOpenSession) {
    TestMachine machine("var/log/wtmp =" + hexOf(fileBytes({{kUser, "ada", "tty1", 1779000000}})) +
                        "\n"
                        "run/systemd/sessions/c1:\n\tUSER=gdm\n\tCLASS=greeter\n\tREALTIME=1999000000000000\n"
                        "run/systemd/sessions/2:\n\tUSER=bob\n\tCLASS=user\n\tTTY=tty2\n"
                        "\tREALTIME=1779271872000001\n");
    EXPECT_THAT(collectOne(machine, "LastLoggedUser"),
                IsSupersetOf(Fields{{"UserName", "bob"},
                                    {"LoginTime", "2026-05-20T10:11:12Z"},
                                    {"StillLoggedIn", "true"},
                                    {"SessionKind", "Console"},
                                    {"Source", "/run/systemd/sessions"}}));
}

TEST(LastLoggedUser, IsNobodyWithoutALogin) {
    TestMachine machine("var/log/wtmp =" + hexOf(fileBytes({{kBoot, "reboot", "~", 5}})) + "\n");
    EXPECT_EQ(0U, collectInstances(*machine, "LastLoggedUser").size());
}

TEST(LastLoggedUser, TellsOfACutFile) {
    const std::string file = recordBytes({kUser, "ada", "tty1", 1779000000}) + "cut";
    TestMachine machine("var/log/wtmp =" + hexOf(file) + "\n");
    EXPECT_EQ("ada", collectOne(machine, "LastLoggedUser").at("UserName"));
    EXPECT_EQ((std::vector<std::string>{"/var/log/wtmp@384"}), machine->sources().malformedItems());
}

}  // namespace
