// Unit files and init scripts, and the group ServiceInfo.
#include <gtest/gtest.h>

#include <filesystem>

#include "scanners/zukhw/unit_files.h"
#include "tests/zukhw/test_machine.h"

namespace {

UnitFacts parseUnitFile(const std::string& text) {
    UnitFacts facts;
    addUnitFile(text, &facts);
    return facts;
}

TEST(UnitFile, TellsWhatTheServiceIs) {
    const UnitFacts facts = parseUnitFile(
        "# a comment\n"
        "[Unit]\n"
        "Description=Secure shell\n"
        "User=nobody\n"
        "[Service]\n"
        "Type = notify\n"
        "User=sshd\n"
        "ExecStartPre=/usr/bin/check\n"
        "ExecStart=\n"
        "ExecStart=-/usr/sbin/sshd -D \\\n"
        "    Type=wrong\n"
        "ExecStart=/second\n"
        "[Install]\n"
        "WantedBy=multi-user.target\n");
    EXPECT_EQ("Secure shell", facts.description);
    EXPECT_EQ("notify", facts.type);
    EXPECT_EQ("sshd", facts.user);
    EXPECT_EQ("/usr/sbin/sshd", facts.executable);
    EXPECT_TRUE(facts.installable);
}

struct CommandCase {
    const char* command;
    const char* executable;
};

TEST(UnitFile, TakesTheSignsBeforeAProgramOff) {
    const CommandCase cases[] = {{"@+/bin/x x", "/bin/x"},
                                 {"\"/opt/a b/x\" y", "/opt/a b/x"},
                                 {"!!/bin/x", "/bin/x"},
                                 {"\"never closed", "never closed"},
                                 {"-", ""},
                                 {"/bin/x\\", "/bin/x"}};
    for (const CommandCase& c : cases) {
        EXPECT_EQ(c.executable,
                  parseUnitFile(std::string("[Service]\nExecStart=") + c.command + "\n").executable)
            << c.command;
    }
}

Fields serviceOf(TestMachine& machine, const std::string& name) {
    for (const Fields& service : collectInstances(*machine, "ServiceInfo")) {
        if (service.at("Name") == name) return service;
    }
    return {};
}

const std::string kUnits =
    "usr/lib/systemd/system/on.service:\n\t[Service]\n\tExecStart=/on\n\t[Install]\n"
    "usr/lib/systemd/system/off.service:\n\t[Install]\n"
    "usr/lib/systemd/system/static.service:\n\t[Service]\n"
    "usr/lib/systemd/system/masked.service:\n\t[Service]\n"
    "usr/lib/systemd/system/emptied.service:\n"
    "usr/lib/systemd/system/named.service:\n\t[Install]\n"
    "usr/lib/systemd/system/getty@.service:\n\t[Service]\n\t[Install]\n"
    "usr/lib/systemd/system/multi-user.target.wants/static.service -> ../static.service\n"
    "run/systemd/generator/made.service:\n\t[Service]\n"
    "etc/systemd/system/masked.service -> /dev/null\n"
    "etc/systemd/system/other-name.service -> /usr/lib/systemd/system/named.service\n"
    "etc/systemd/system/multi-user.target.wants/on.service -> /usr/lib/systemd/system/on.service\n"
    "etc/systemd/system/getty.target.wants/getty@tty1.service -> /usr/lib/systemd/system/getty@.service\n";

TEST(ServiceInfo, TellsHowEachServiceIsStarted) {
    TestMachine machine(kUnits);
    std::map<std::string, std::string> modes;
    for (const Fields& service : collectInstances(*machine, "ServiceInfo")) {
        modes[service.at("Name")] = service.at("StartMode");
    }
    EXPECT_EQ((std::map<std::string, std::string>{{"on.service", "Enabled"},
                                                  {"off.service", "Disabled"},
                                                  {"static.service", "Static"},
                                                  {"masked.service", "Masked"},
                                                  {"emptied.service", "Masked"},
                                                  {"named.service", "Enabled"},
                                                  {"other-name.service", "Alias"},
                                                  {"made.service", "Generated"},
                                                  {"getty@tty1.service", "Enabled"}}),
              modes);
}

TEST(ServiceInfo, TakesTheUnitOfTheHighestDirectory) {
    TestMachine machine(kUnits + "etc/systemd/system/on.service:\n\t[Unit]\n\tDescription=Mine\n");
    EXPECT_EQ((Fields{{"Name", "on.service"},
                      {"Description", "Mine"},
                      {"Manager", "Systemd"},
                      {"StartMode", "Enabled"},
                      {"UnitPath", "/etc/systemd/system/on.service"}}),
              serviceOf(machine, "on.service"));
}

TEST(ServiceInfo, HasWhatIsDroppedIntoAUnit) {
    TestMachine machine(
        "usr/lib/systemd/system/a-b@.service:\n\t[Service]\n\tUser=unit\n\tExecStart=/old\n\tType=simple\n"
        "etc/systemd/system/x.wants/a-b@1.service -> /usr/lib/systemd/system/a-b@.service\n"
        "etc/systemd/system/a-b@1.service.d/20.conf:\n\t[Service]\n\tExecStart=\n\tExecStart=/"
        "new\n\t[Install]\n"
        "etc/systemd/system/a-b@.service.d/10.conf:\n\t[Service]\n\tUser=template\n"
        "etc/systemd/system/a-.service.d/05.conf:\n\t[Service]\n\tUser=prefix\n"
        "etc/systemd/system/service.d/05.conf:\n\t[Service]\n\tUser=shadowed\n\tType=notify\n"
        "run/systemd/system/a-b@.service.d/10.conf:\n\t[Service]\n\tUser=lower\n"
        "usr/lib/systemd/system/service.d/99.conf:\n\t[Unit]\n\tDescription=Of all\n"
        "etc/systemd/system/a-b@1.service.d/notes: User=none\n");
    EXPECT_EQ((Fields{{"Name", "a-b@1.service"},
                      {"Description", "Of all"},
                      {"Manager", "Systemd"},
                      {"StartMode", "Enabled"},
                      {"User", "template"},
                      {"Executable", "/new"},
                      {"UnitPath", "/usr/lib/systemd/system/a-b@.service"},
                      {"Type", "simple"}}),
              collectOne(machine, "ServiceInfo"));
}

TEST(ServiceInfo, HasInstancesThatAGeneratorEnables) {
    TestMachine machine(
        "usr/lib/systemd/system/db@.service:\n\t[Service]\n\tType=forking\n"
        "run/systemd/generator/db.service.wants/db@main.service -> /usr/lib/systemd/system/db@.service\n");
    EXPECT_EQ("db@main.service", collectOne(machine, "ServiceInfo").at("Name"));
}

void makeProgram(const TestMachine& machine, const std::string& path) {
    std::filesystem::permissions(machine.root() + '/' + path, std::filesystem::perms::owner_all);
}

TEST(ServiceInfo, HasScriptsWithoutAUnit) {
    TestMachine machine(kUnits +
                        "etc/init.d/old:\n\t#!/bin/sh\n\t# Short-Description: An old one\n"
                        "etc/init.d/on: #!/bin/sh\n"
                        "etc/init.d/text: no program\n"
                        "etc/rc3.d/S01old -> ../init.d/old\n");
    makeProgram(machine, "etc/init.d/old");
    makeProgram(machine, "etc/init.d/on");
    EXPECT_EQ((Fields{{"Name", "old"},
                      {"Description", "An old one"},
                      {"Manager", "SysV"},
                      {"StartMode", "Enabled"},
                      {"UnitPath", "/etc/init.d/old"}}),
              serviceOf(machine, "old"));
    EXPECT_EQ(Fields(), serviceOf(machine, "on"));
    EXPECT_EQ(Fields(), serviceOf(machine, "text"));
}

TEST(ServiceInfo, HasTheUnitInsteadOfAShellScript) {
    TestMachine machine("etc/init.d/clock.sh:\n\t#!/bin/sh\nlib/systemd/system/clock.service -> /dev/null\n");
    makeProgram(machine, "etc/init.d/clock.sh");
    EXPECT_EQ("clock.service", collectOne(machine, "ServiceInfo").at("Name"));
}

TEST(ServiceInfo, HasTheServicesOfOpenRc) {
    TestMachine machine(
        "etc/init.d/sshd:\n\t#!/sbin/openrc-run\n\tdescription=\"Secure shell\"\n"
        "etc/runlevels/default/sshd -> /etc/init.d/sshd\n");
    makeProgram(machine, "etc/init.d/sshd");
    const Fields service = collectOne(machine, "ServiceInfo");
    EXPECT_EQ("OpenRC", service.at("Manager"));
    EXPECT_EQ("Enabled", service.at("StartMode"));
    EXPECT_EQ("Secure shell", service.at("Description"));
}

}  // namespace
