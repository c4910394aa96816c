// What is read of captured systems - memory blocks, release files, packages, logins, input devices - against
// what other tools say of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "scanners/zukhw/os_release.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/test_machine.h"

namespace {

using testing::IsSupersetOf;

namespace fs = std::filesystem;

class SystemCaptures : public testing::Test {
  protected:
    void SetUp() override { SKIP_WITHOUT_CAPTURES(); }
};

// "Total online memory:               16G"
TEST_F(SystemCaptures, HaveTheMemoryBlocksThatLsmemCounts) {
    for (const std::string& name : captureNames("lsmem")) {
        const std::string text = captureText(name + ".txt");
        std::string_view told;
        for (const std::string_view line : lines(text)) {
            if (startsWith(line, "Total online memory:")) told = trim(line.substr(20));
        }
        ASSERT_TRUE(endsWith(told, "G")) << told;
        const Capture capture(name);
        Machine machine = capture.machine();
        const Fields memory = collectInstances(machine, "Memory").at(0);
        EXPECT_EQ(std::to_string(parseDecimal(told.substr(0, told.size() - 1)).value() << 30U),
                  valueOf(memory, "InstalledBytes"));
        EXPECT_EQ("MemoryBlocks", valueOf(memory, "InstalledSource"));
    }
}

// What a shell makes of the file, which is how it is meant to be read.
std::string shellValue(const std::string& file, const char* key) {
    const ShellResult result =
        shell("unset " + std::string(key) + "; . " + quoted(file) + " && printf %s \"$" + key + "\"");
    EXPECT_EQ(0, result.status) << result.err;
    return result.out;
}

TEST_F(SystemCaptures, HaveTheDistributionThatTheReleaseFileNames) {
    static constexpr std::pair<const char*, const char*> kFields[] = {{"NAME", "Name"},
                                                                      {"PRETTY_NAME", "PrettyName"},
                                                                      {"ID", "Id"},
                                                                      {"ID_LIKE", "IdLike"},
                                                                      {"VERSION", "Version"},
                                                                      {"VERSION_ID", "VersionId"},
                                                                      {"VERSION_CODENAME", "Codename"},
                                                                      {"VARIANT", "Variant"},
                                                                      {"BUILD_ID", "BuildId"}};
    for (const std::string& name : captureNames("osrelease")) {
        const Capture capture(name);
        Machine machine = capture.machine();
        const Fields system = collectInstances(machine, "OperatingSystem").at(0);
        std::string file = capture.root() + "/etc/os-release";
        if (!fs::exists(file)) file = capture.root() + "/usr/lib/os-release";
        for (const auto& [key, field] : kFields) {
            EXPECT_EQ(cleanText(shellValue(file, key)), valueOf(system, field)) << name << ' ' << field;
        }
        const std::string debian = cleanText(readFile(capture.root() + "/etc/debian_version"));
        const bool isNumber = debian.find_first_of("0123456789") == 0;
        EXPECT_EQ(isNumber ? debian : "", valueOf(system, "PointRelease")) << name;
    }
}

// name, epoch, version, release, architecture, vendor, time of installation, size, summary
TEST_F(SystemCaptures, HaveThePackagesThatRpmLists) {
    const Capture capture("rpmdb/sqlite");
    Machine machine = capture.machine();
    std::map<std::string, Fields> packages;
    for (const Fields& package : collectInstances(machine, "SoftwarePackages")) {
        packages[valueOf(package, "Name") + ' ' + valueOf(package, "Version")] = package;
    }
    const std::string list = captureText("rpmdb/expected-sqlite.tsv");
    std::size_t count = 0;
    for (const std::string_view line : lines(list)) {
        const std::vector<std::string_view> cells = split(line, '\t');
        ASSERT_EQ(9U, cells.size()) << line;
        std::string version = std::string(cells[2]) + '-' + std::string(cells[3]);
        if (!cells[1].empty() && cells[1] != "0") version = std::string(cells[1]) + ':' + version;
        const auto found = packages.find(std::string(cells[0]) + ' ' + version);
        ASSERT_NE(packages.end(), found) << line;
        const Fields& package = found->second;
        ++count;
        EXPECT_EQ("rpm", valueOf(package, "Manager"));
        EXPECT_EQ(cells[1], valueOf(package, "Epoch")) << line;
        EXPECT_EQ(cells[3], valueOf(package, "Release")) << line;
        EXPECT_EQ(cells[4], valueOf(package, "Architecture")) << line;
        EXPECT_EQ(cells[5], valueOf(package, "Vendor")) << line;
        EXPECT_EQ(utcTime(parseSigned(cells[6]).value_or(0)).substr(0, 10), valueOf(package, "InstallDate"))
            << line;
        EXPECT_EQ(cells[7], valueOf(package, "InstalledBytes")) << line;
        EXPECT_NE("Unspecified", valueOf(package, "Group")) << line;
        EXPECT_EQ(cleanText(cells[8]), valueOf(package, "Summary")) << line;
    }
    EXPECT_EQ(count, packages.size());
}

// "rick     long         never-gonna-logout 1970-01-01T00:00:00+00:00 - 2038-01-19T03:14:07+00:00 (...)"
TEST_F(SystemCaptures, HaveTheLastLoginThatLastPrints) {
    TestMachine machine("var/log/\n");
    fs::copy_file(capturesFolder() + "/utmp/wtmp-a.LE", machine.root() + "/var/log/wtmp");
    const Fields login = collectOne(machine, "LastLoggedUser");
    const std::string text = captureText("utmp/wtmp-a.last.txt");
    const std::size_t start = text.find("~~~ iso-8601 time ~~~\n");
    ASSERT_NE(std::string::npos, start);
    const std::string first(lines(std::string_view(text).substr(start)).at(1));
    const std::vector<std::string_view> cells = words(first);
    EXPECT_EQ(cells.at(0), valueOf(login, "UserName"));
    EXPECT_EQ(cells.at(1), valueOf(login, "Terminal"));
    EXPECT_EQ(cells.at(2), valueOf(login, "RemoteHost"));
    EXPECT_EQ(std::string(cells.at(3).substr(0, 19)) + 'Z', valueOf(login, "LoginTime"));
    EXPECT_EQ(std::string(cells.at(5).substr(0, 19)) + 'Z', valueOf(login, "LogoutTime"));
    EXPECT_EQ("false", valueOf(login, "StillLoggedIn"));
}

// A recording of devices: "P: /devices/...", then "A: attribute=text", "E: PROPERTY=text", "L: link=target".
class Recording {
  public:
    explicit Recording(const std::string& file) : machine_("sys/class/\n") {
        const std::string text = captureText(file);
        for (const std::string_view line : lines(text)) {
            if (line.size() > 3) plant(line[0], line.substr(3));
        }
    }

    Fields only(const char* group) { return collectOne(machine_, group); }
    std::size_t count(const char* group) { return collectInstances(*machine_, group).size(); }

  private:
    void plant(char kind, std::string_view rest) {
        const std::size_t equals = rest.find('=');
        const std::string key(rest.substr(0, equals));
        const std::string value(equals == std::string_view::npos ? "" : rest.substr(equals + 1));
        if (kind == 'P') {
            path_ = "/sys" + std::string(rest);
            fs::create_directories(machine_.root() + path_);
        } else if (kind == 'A') {
            std::ofstream(machine_.root() + path_ + '/' + key) << value << '\n';
        } else if (kind == 'L') {
            fs::create_symlink(value, machine_.root() + path_ + '/' + key);
        } else if (kind == 'E') {
            std::ofstream(machine_.root() + path_ + "/uevent", std::ios::app) << key << '=' << value << '\n';
            if (key == "SUBSYSTEM") link(value);
        }
    }

    void link(const std::string& subsystem) {
        const std::string folder = machine_.root() + "/sys/class/" + subsystem;
        fs::create_directories(folder);
        fs::create_symlink("../../.." + path_, folder + path_.substr(path_.find_last_of('/')));
    }

    TestMachine machine_;
    std::string path_;
};

TEST_F(SystemCaptures, HaveTheRecordedKeyboard) {
    Recording recording("umockdev/usbkbd.umockdev");
    EXPECT_THAT(recording.only("Keyboard"),
                IsSupersetOf(Fields{{"Name", "HID 05f3:0007"},
                                    {"VendorId", "05f3"},
                                    {"ProductId", "0007"},
                                    {"VersionId", "0100"},
                                    {"Bus", "USB"},
                                    {"PhysicalPath", "usb-0000:00:1a.0-1.5.4.2/input0"},
                                    {"HasNumericPad", "true"},
                                    {"HasLeds", "true"}}));
    EXPECT_EQ(0U, recording.count("PointingDevice"));
}

TEST_F(SystemCaptures, HaveTheRecordedTouchpad) {
    Recording recording("umockdev/synaptics-touchpad.umockdev");
    EXPECT_THAT(recording.only("PointingDevice"),
                IsSupersetOf(Fields{{"Name", "SynPS/2 Synaptics TouchPad"},
                                    {"Kind", "Touchpad"},
                                    {"VendorId", "0002"},
                                    {"ProductId", "0007"},
                                    {"VersionId", "01b1"},
                                    {"Bus", "PS/2"},
                                    {"PhysicalPath", "isa0060/serio1/input0"},
                                    {"Driver", "psmouse"},
                                    {"Buttons", "1"},
                                    {"HasWheel", "false"}}));
    EXPECT_EQ(0U, recording.count("Keyboard"));
}

}  // namespace
