// The group SoftwarePackages. The texts of the databases have tests of their own; here it is about where they
// lie and what is reported of them.
#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

const std::string kDpkg =
    "var/lib/dpkg/status:\n"
    "\tPackage: zoo10\n\tStatus: install ok installed\n\tArchitecture: all\n\tVersion: 1\n\t\n"
    "\tPackage: zoo9\n\tStatus: hold ok installed\n\tEssential: yes\n\tArchitecture: amd64\n"
    "\tVersion: 2:1.5-3\n\tInstalled-Size: 12\n\tMaintainer: A. <a@x>\n\tSection: libs\n\tSource: zoo (1.5)\n"
    "\tDescription: animals\n\t many of them\n\t\n"
    "\tPackage: gone\n\tStatus: deinstall ok config-files\n\tArchitecture: all\n\tVersion: 1\n\n";

TEST(SoftwarePackages, OfDpkgAreThoseInstalled) {
    TestMachine machine(kDpkg +
                        "var/lib/apt/extended_states:\n"
                        "\tPackage: zoo10\n\tArchitecture: amd64\n\tAuto-Installed: 1\n\n");
    const std::vector<Fields> packages = collectInstances(*machine, "SoftwarePackages");
    ASSERT_EQ(2U, packages.size());
    EXPECT_EQ((Fields{{"Name", "zoo9"},
                      {"Version", "2:1.5-3"},
                      {"Architecture", "amd64"},
                      {"Manager", "dpkg"},
                      {"Maintainer", "A. <a@x>"},
                      {"Summary", "animals"},
                      {"Section", "libs"},
                      {"Source", "zoo"},
                      {"InstalledBytes", "12288"},
                      {"Essential", "true"},
                      {"Automatic", "false"},
                      {"Held", "true"}}),
              packages[0]);
    EXPECT_EQ("zoo10", packages[1].at("Name"));
    EXPECT_EQ("true", packages[1].at("Automatic"));
}

TEST(SoftwarePackages, OfDpkgHaveTheDateOfTheirListOfFiles) {
    TestMachine machine(kDpkg +
                        "var/lib/dpkg/info/zoo9:amd64.list: /usr\nvar/lib/dpkg/info/zoo10.list: /usr\n");
    for (const Fields& package : collectInstances(*machine, "SoftwarePackages")) {
        EXPECT_EQ(10U, package.at("InstallDate").size()) << package.at("Name");
    }
}

TEST(SoftwarePackages, ThatOnlyTheirTextTellsApartKeepTheirOrder) {
    const auto package = [](const std::string& summary) {
        return "\tPackage: a\n\tStatus: install ok installed\n\tArchitecture: all\n\tVersion: "
               "1\n\tDescription: " +
               summary + "\n\t\n";
    };
    TestMachine machine("var/lib/dpkg/status:\n" + package("first") + package("second") + package("third"));
    std::vector<std::string> summaries;
    for (const Fields& fields : collectInstances(*machine, "SoftwarePackages"))
        summaries.push_back(fields.at("Summary"));
    EXPECT_EQ((std::vector<std::string>{"first", "second", "third"}), summaries);
}

TEST(SoftwarePackages, OfAnImageWithoutDpkgAreItsControlFiles) {
    TestMachine machine(
        "var/lib/dpkg/status.d/base:\n\tPackage: base-files\n\tVersion: 12\n\tArchitecture: amd64\n"
        "var/lib/dpkg/status.d/base.md5sums: 0123  etc/x\n");
    EXPECT_EQ("base-files", collectOne(machine, "SoftwarePackages").at("Name"));
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(SoftwarePackages, OfSeveralManagersComeByTheManagersName) {
    TestMachine machine(
        kDpkg +
        "lib/apk/db/installed:\n\tP:musl\n\tV:1.2.4-r2\n\tA:x86_64\n\tT:libc\n\tL:MIT\n\n"
        "var/lib/pacman/local/ALPM_DB_VERSION: 9\n"
        "var/lib/pacman/local/zlib-1.3-1/desc:\n\t%NAME%\n\tzlib\n\t\n\t%VERSION%\n\t1:1.3-1\n\t\n"
        "\t%INSTALLDATE%\n\t1779271872\n\t\n\t%REASON%\n\t1\n");
    const std::vector<Fields> packages = collectInstances(*machine, "SoftwarePackages");
    ASSERT_EQ(4U, packages.size());
    EXPECT_EQ((Fields{{"Name", "musl"},
                      {"Version", "1.2.4-r2"},
                      {"Architecture", "x86_64"},
                      {"Manager", "apk"},
                      {"Summary", "libc"},
                      {"License", "MIT"}}),
              packages[0]);
    EXPECT_EQ("dpkg", packages[1].at("Manager"));
    EXPECT_EQ((Fields{{"Name", "zlib"},
                      {"Version", "1:1.3-1"},
                      {"Manager", "pacman"},
                      {"InstallDate", "2026-05-20"},
                      {"Automatic", "true"}}),
              packages[3]);
}

TEST(SoftwarePackages, SkipAndCountWhatIsBroken) {
    TestMachine machine(kDpkg + "var/lib/pacman/local/x/desc: nonsense\nvar/lib/rpm/Packages: nonsense\n");
    EXPECT_EQ(2U, collectInstances(*machine, "SoftwarePackages").size());
    EXPECT_EQ((std::vector<std::string>{"/var/lib/pacman/local/x/desc@0", "/var/lib/rpm/Packages@0"}),
              machine->sources().malformedItems());
}

}  // namespace
