// Of the group VirtualMachineGuest the machines of VirtualBox and the containers of Docker and Podman, and
// what control groups and links tell of others.
#include <gtest/gtest.h>

#include "scanners/zukhw/parse.h"
#include "tests/zukhw/test_machine.h"

namespace {

const std::string kRegistry =
    "etc/passwd:\n\tada:x:1000:100::/home/ada:/bin/sh\n\teve:x:1001:100::/home/ada:/bin/sh\n"
    "home/ada/.config/VirtualBox/VirtualBox.xml: <VirtualBox><Global><MachineRegistry>"
    "<MachineEntry uuid=\"{1}\" src=\"/home/ada/vms/win/win.vbox\"/><MachineEntry uuid=\"{2}\"/>"
    "<MachineEntry uuid=\"{3}\" src=\"/gone.vbox\"/></MachineRegistry></Global></VirtualBox>\n";

TEST(VirtualMachineGuest, OfVirtualBoxIsTheStateOutsideItsSnapshots) {
    TestMachine machine(
        kRegistry +
        "home/ada/vms/win/win.vbox:\n"
        "\t<VirtualBox><Machine uuid=\"{4C4C4544-0038-3510-8052-B4C04F4A3132}\" name=\"win\">\n"
        "\t<Description>For tests</Description>\n"
        "\t<MediaRegistry><HardDisks><HardDisk uuid=\"{a}\" location=\"win.vdi\">"
        "<HardDisk uuid=\"{b}\" location=\"Snapshots/{b}.vdi\"/></HardDisk></HardDisks></MediaRegistry>\n"
        "\t<Snapshot name=\"old\"><Hardware><Memory RAMSize=\"1\"/></Hardware><StorageControllers>"
        "<StorageController><AttachedDevice type=\"HardDisk\"><Image uuid=\"{a}\"/></AttachedDevice>"
        "</StorageController></StorageControllers></Snapshot>\n"
        "\t<Hardware><CPU/><Memory RAMSize=\"2048\"/><Network>"
        "<Adapter slot=\"0\" enabled=\"true\" MACAddress=\"0800276F3A1B\"/>"
        "<Adapter slot=\"1\" MACAddress=\"0800276F3A1C\"/></Network>\n"
        "\t<StorageControllers><StorageController>"
        "<AttachedDevice type=\"DVD\"><Image uuid=\"{c}\"/></AttachedDevice>"
        "<AttachedDevice type=\"HardDisk\"><Image uuid=\"{b}\"/></AttachedDevice>"
        "</StorageController></StorageControllers></Hardware>\n"
        "\t<Autostart enabled=\"true\"/>\n"
        "\t</Machine></VirtualBox>\n");
    EXPECT_EQ((Fields{{"Name", "win"},
                      {"Uuid", "4c4c4544-0038-3510-8052-b4c04f4a3132"},
                      {"Hypervisor", "virtualbox"},
                      {"Kind", "Machine"},
                      {"MemoryBytes", "2147483648"},
                      {"VirtualCpus", "1"},
                      {"MacAddresses", "08:00:27:6f:3a:1b"},
                      {"Disks", "Snapshots/{b}.vdi"},
                      {"Autostart", "true"},
                      {"Description", "For tests"},
                      {"DefinitionPath", "/home/ada/vms/win/win.vbox"}}),
              collectOne(machine, "VirtualMachineGuest"));
}

TEST(VirtualMachineGuest, OfVirtualBoxIsNotReadFromHomesThatMayHang) {
    TestMachine machine(kRegistry +
                        "home/ada/vms/win/win.vbox: <VirtualBox><Machine name=\"win\"/></VirtualBox>\n"
                        "proc/self/mountinfo: 30 1 0:40 / /home rw - nfs4 host:/home rw\n");
    EXPECT_TRUE(collectInstances(*machine, "VirtualMachineGuest").empty());
}

TEST(VirtualMachineGuest, IsAContainerOfDocker) {
    TestMachine machine(
        "var/lib/docker/containers/0123/config.v2.json: "
        "{\"ID\":\"0123\",\"Created\":\"2026-05-20T12:11:12.123456789+02:00\",\"Name\":\"/web\","
        "\"Image\":\"sha256:ab\",\"State\":{\"Running\":true,\"Pid\":7},\"Config\":{\"Image\":\"nginx:1.25\"}"
        ","
        "\"NetworkSettings\":{\"Networks\":{\"bridge\":{\"MacAddress\":\"02:42:AC:11:00:02\"},\"none\":null}}"
        "}\n"
        "var/lib/docker/containers/0123/hostconfig.json: "
        "{\"Memory\":536870912,\"NanoCpus\":2000000000,\"RestartPolicy\":{\"Name\":\"unless-stopped\"}}\n"
        "var/lib/docker/containers/4567/config.v2.json: {\"ID\":\"4567\",\"Name\":7,\"State\":[]}\n"
        "var/lib/docker/containers/cut/config.v2.json: {\"ID\":\n");
    const std::vector<Fields> guests = collectInstances(*machine, "VirtualMachineGuest");
    ASSERT_EQ(2U, guests.size());
    EXPECT_EQ((Fields{{"Name", "4567"},
                      {"Hypervisor", "docker"},
                      {"Kind", "Container"},
                      {"DefinitionPath", "/var/lib/docker/containers/4567/config.v2.json"}}),
              guests[0]);
    EXPECT_EQ((Fields{{"Name", "web"},
                      {"Hypervisor", "docker"},
                      {"Kind", "Container"},
                      {"State", "Running"},
                      {"MemoryBytes", "536870912"},
                      {"VirtualCpus", "2"},
                      {"MacAddresses", "02:42:ac:11:00:02"},
                      {"Autostart", "true"},
                      {"Image", "nginx:1.25"},
                      {"CreatedAt", "2026-05-20T10:11:12Z"},
                      {"DefinitionPath", "/var/lib/docker/containers/0123/config.v2.json"}}),
              guests[1]);
    EXPECT_EQ((std::vector<std::string>{"/var/lib/docker/containers/cut/config.v2.json@0"}),
              machine->sources().malformedItems());
}

TEST(VirtualMachineGuest, IsAContainerOfPodman) {
    const std::string path = "var/lib/containers/storage/overlay-containers/containers.json";
    TestMachine machine(path +
                        ": [{\"id\":\"abcd\",\"names\":[\"db\"],\"image\":\"ef01\",\"metadata\":"
                        "\"{\\\"image-name\\\":\\\"docker.io/library/postgres:15\\\"}\","
                        "\"created\":\"2026-05-20T10:11:12.5Z\"},"
                        "{\"id\":\"wxyz\",\"image\":\"ef01\",\"metadata\":\"{\"},3]\n"
                        "run/crun/abcd/status: {}\n");
    const std::vector<Fields> guests = collectInstances(*machine, "VirtualMachineGuest");
    ASSERT_EQ(2U, guests.size());
    EXPECT_EQ((Fields{{"Name", "db"},
                      {"Hypervisor", "podman"},
                      {"Kind", "Container"},
                      {"State", "Running"},
                      {"Image", "docker.io/library/postgres:15"},
                      {"CreatedAt", "2026-05-20T10:11:12Z"},
                      {"DefinitionPath", '/' + path}}),
              guests[0]);
    EXPECT_EQ((Fields{{"Name", "wxyz"},
                      {"Hypervisor", "podman"},
                      {"Kind", "Container"},
                      {"Image", "ef01"},
                      {"DefinitionPath", '/' + path}}),
              guests[1]);
}

TEST(VirtualMachineGuest, SurvivesMetadataThatIsNestedDeep) {
    TestMachine machine(
        "var/lib/containers/storage/overlay-containers/containers.json: [{\"id\":\"a\",\"metadata\":\"" +
        std::string(100000, '[') + "\"}]\n");
    EXPECT_EQ("a", collectOne(machine, "VirtualMachineGuest").at("Name"));
}

TEST(VirtualMachineGuest, OfLxcRunsWhenItsControlGroupHasProcesses) {
    const std::string tree =
        "var/lib/lxc/one/config: lxc.cgroup2.memory.max = 512M\n"
        "var/lib/lxc/two/config: lxc.uts.name = two\n";
    TestMachine unknown(tree);
    EXPECT_EQ(0U, collectInstances(*unknown, "VirtualMachineGuest")[0].count("State"));
    TestMachine machine(tree +
                        "sys/fs/cgroup/cgroup.controllers: cpu memory\n"
                        "sys/fs/cgroup/lxc.payload.one/cgroup.events:\n\tpopulated 1\n\tfrozen 0\n"
                        "sys/fs/cgroup/lxc.payload.two/cgroup.events:\n\tpopulated 0\n\tfrozen 0\n");
    const std::vector<Fields> guests = collectInstances(*machine, "VirtualMachineGuest");
    ASSERT_EQ(2U, guests.size());
    EXPECT_EQ("Running", guests[0].at("State"));
    EXPECT_EQ("536870912", guests[0].at("MemoryBytes"));
    EXPECT_EQ("Stopped", guests[1].at("State"));
}

TEST(VirtualMachineGuest, OfProxmoxHasItsNotesAndItsAge) {
    TestMachine machine(
        "etc/pve/qemu-server/7.conf:\n\t#First%3A line\n\t#100% second\n\tname: x\n\tsockets: 2\n"
        "\tmeta: creation-qemu=8.0.2,ctime=1779271872\n");
    const Fields guest = collectOne(machine, "VirtualMachineGuest");
    EXPECT_EQ("First: line 100% second", guest.at("Description"));
    EXPECT_EQ("2026-05-20T10:11:12Z", guest.at("CreatedAt"));
    EXPECT_EQ("2", guest.at("VirtualCpus"));
}

TEST(VirtualMachineGuest, OfNspawnIsStartedByALink) {
    TestMachine machine(
        "var/lib/machines/box/etc/os-release: ID=x\n"
        "etc/systemd/system/machines.target.wants/systemd-nspawn@box.service -> "
        "/usr/lib/systemd/system/systemd-nspawn@.service\n");
    EXPECT_EQ("true", collectOne(machine, "VirtualMachineGuest").at("Autostart"));
}

struct TimeCase {
    const char* text;
    std::optional<std::int64_t> seconds;
};

TEST(IsoTime, HasAFractionAndAnOffset) {
    const TimeCase cases[] = {{"2026-05-20T10:11:12Z", 1779271872},
                              {"2026-05-20T10:11:12", 1779271872},
                              {"2026-05-20T10:11:12.999999999Z", 1779271872},
                              {"2026-05-20T12:11:12.5+02:00", 1779271872},
                              {"2026-05-20T08:41:12-01:30", 1779271872},
                              {"2026-05-20T10:11:12+", std::nullopt},
                              {"2026-05-20T10:11:12+2:00", std::nullopt},
                              {"2026-05-20T10:11:12 UTC", std::nullopt},
                              {"2026-05-20", std::nullopt},
                              {"", std::nullopt}};
    for (const TimeCase& c : cases) EXPECT_EQ(c.seconds, parseIsoTime(c.text)) << c.text;
}

}  // namespace
