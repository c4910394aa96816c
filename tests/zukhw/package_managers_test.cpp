// Of the group SoftwarePackages the managers that few machines have: Portage, xbps, Flatpak and snap.
#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

TEST(SoftwarePackages, OfPortageAreDirectoriesOfFacts) {
    TestMachine machine(
        "var/db/pkg/app-shells/bash-5.2_p21-r1/CHOST: x86_64-pc-linux-gnu\n"
        "var/db/pkg/app-shells/bash-5.2_p21-r1/DESCRIPTION: The shell\n"
        "var/db/pkg/app-shells/bash-5.2_p21-r1/LICENSE: GPL-3+\n"
        "var/db/pkg/app-shells/bash-5.2_p21-r1/SIZE: 8192\n"
        "var/db/pkg/app-shells/-MERGING-zsh-5.9/SIZE: 1\n");
    EXPECT_EQ((Fields{{"Name", "app-shells/bash"},
                      {"Version", "5.2_p21-r1"},
                      {"Architecture", "x86_64"},
                      {"Manager", "portage"},
                      {"Summary", "The shell"},
                      {"Section", "app-shells"},
                      {"License", "GPL-3+"},
                      {"InstalledBytes", "8192"}}),
              collectOne(machine, "SoftwarePackages"));
}

struct NameCase {
    const char* directory;
    const char* name;  // empty: no package
    const char* version;
};

TEST(SoftwarePackages, OfPortageHaveTheirVersionBehindAHyphen) {
    const NameCase cases[] = {
        {"gtk+-3.24.39", "c/gtk+", "3.24.39"},
        {"r2-d2-1", "c/r2-d2", "1"},
        {"lib-2-r10", "c/lib", "2-r10"},
        {"font-adobe-100dpi-1.0.3", "c/font-adobe-100dpi", "1.0.3"},
        {"nothing", "", ""},
        {"no-version", "", ""},
        {"x-r1", "", ""},
        {"9-1-r1", "c/9", "1-r1"},
    };
    for (const NameCase& c : cases) {
        TestMachine machine("var/db/pkg/c/" + std::string(c.directory) + "/SLOT: 0\n");
        const std::vector<Fields> packages = collectInstances(*machine, "SoftwarePackages");
        ASSERT_EQ(*c.name == '\0' ? 0U : 1U, packages.size()) << c.directory;
        EXPECT_EQ(*c.name == '\0' ? 1U : 0U, machine->sources().malformedCount()) << c.directory;
        if (packages.empty()) continue;
        EXPECT_EQ(c.name, packages[0].at("Name"));
        EXPECT_EQ(c.version, packages[0].at("Version"));
    }
}

const std::string kXbps =
    "var/db/xbps/pkgdb-0.38.plist:\n"
    "\t<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "\t<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://host.invalid/PropertyList-1.0.dtd\">\n"
    "\t<plist version=\"1.0\"><dict>\n"
    "\t<key>_XBPS_ALTERNATIVES_</key><dict><key>sh</key><array><string>dash</string></array></dict>\n"
    "\t<key>dash</key><dict>\n"
    "\t<key>architecture</key><string>x86_64</string>\n"
    "\t<key>automatic-install</key><true/>\n"
    "\t<key>alternatives</key><dict><key>state</key><string>gone</string></dict>\n"
    "\t<key>install-date</key><string>2026-05-20 23:11 UTC</string>\n"
    "\t<key>installed_size</key><integer>200000</integer>\n"
    "\t<key>license</key><string>BSD-3-Clause</string>\n"
    "\t<key>maintainer</key><string>A. &lt;a@x&gt;</string>\n"
    "\t<key>pkgver</key><string>dash-0.5.12_1</string>\n"
    "\t<key>short_desc</key><string>A small shell</string>\n"
    "\t<key>state</key><string>installed</string>\n"
    "\t</dict>\n"
    "\t<key>half</key><dict><key>pkgver</key><string>half-1_1</string>"
    "<key>state</key><string>unpacked</string></dict>\n";

TEST(SoftwarePackages, OfXbpsAreThoseInstalled) {
    TestMachine machine(kXbps + "\t</dict></plist>\n");
    EXPECT_EQ((Fields{{"Name", "dash"},
                      {"Version", "0.5.12_1"},
                      {"Architecture", "x86_64"},
                      {"Manager", "xbps"},
                      {"Maintainer", "A. <a@x>"},
                      {"Summary", "A small shell"},
                      {"License", "BSD-3-Clause"},
                      {"InstalledBytes", "200000"},
                      {"InstallDate", "2026-05-20"},
                      {"Automatic", "true"},
                      {"Held", "false"}}),
              collectOne(machine, "SoftwarePackages"));
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(SoftwarePackages, OfXbpsAreKeptUpToTheDamage) {
    TestMachine machine(kXbps);
    EXPECT_EQ("dash", collectOne(machine, "SoftwarePackages").at("Name"));
    EXPECT_EQ((std::vector<std::string>{"/var/db/xbps/pkgdb-0.38.plist@0"}),
              machine->sources().malformedItems());
}

TEST(SoftwarePackages, OfFlatpakAndSnapAreWhatIsInUse) {
    TestMachine machine(
        "var/lib/flatpak/app/org.x.Draw/x86_64/stable/active/metadata: [Application]\n"
        "var/lib/flatpak/app/org.x.Draw/x86_64/stable/active/files/share/metainfo/org.x.Draw.metainfo.xml: "
        "<component><releases><release version=\"2.1\" date=\"2026-01-01\"/></releases></component>\n"
        "var/lib/flatpak/app/org.x.Draw/current -> x86_64/stable\n"
        "var/lib/snapd/snaps/tool_7.snap: x\n"
        "var/lib/snapd/snaps/tool_8.snap: x\n"
        "snap/tool/8/meta/snap.yaml:\n\tname: tool\n\tversion: '1.5'\n\tsummary: A tool\n"
        "\tarchitectures:\n\t- amd64\n\tlicense: MIT\n"
        "snap/tool/current -> 8\n");
    const std::vector<Fields> packages = collectInstances(*machine, "SoftwarePackages");
    ASSERT_EQ(2U, packages.size());
    EXPECT_EQ((Fields{{"Name", "org.x.Draw"},
                      {"Version", "2.1"},
                      {"Architecture", "x86_64"},
                      {"Manager", "flatpak"},
                      {"Section", "app"}}),
              packages[0]);
    EXPECT_EQ((Fields{{"Name", "tool"},
                      {"Version", "1.5"},
                      {"Architecture", "amd64"},
                      {"Manager", "snap"},
                      {"Summary", "A tool"},
                      {"License", "MIT"}}),
              packages[1]);
}

}  // namespace
