// Definitions of virtual machines and containers, and the group VirtualMachineGuest.
#include "scanners/zukhw/guests.h"

#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

const std::string kLibvirt =
    "etc/libvirt/qemu/web.xml:\n"
    "\t<!-- made by a tool -->\n"
    "\t<domain type='kvm'>\n"
    "\t<name>web</name><uuid>4C4C4544-0038-3510-8052-B4C04F4A3132</uuid>\n"
    "\t<description>Front end</description>\n"
    "\t<memory unit='MiB'>2048</memory><vcpu placement='static'>4</vcpu>\n"
    "\t<devices>\n"
    "\t<disk type='file'><source file='/images/web.qcow2'/></disk>\n"
    "\t<disk type='block'><source dev='/dev/vg/web'/></disk>\n"
    "\t<disk type='file' device='cdrom'/>\n"
    "\t<interface type='network'><mac address='52:54:00:AA:BB:CC'/></interface>\n"
    "\t</devices></domain>\n"
    "etc/libvirt/qemu/autostart/web.xml -> /etc/libvirt/qemu/web.xml\n"
    "run/libvirt/qemu/web.pid: 77\n";

TEST(VirtualMachineGuest, OfLibvirtIsItsDefinition) {
    TestMachine machine(kLibvirt);
    EXPECT_EQ((Fields{{"Name", "web"},
                      {"Uuid", "4c4c4544-0038-3510-8052-b4c04f4a3132"},
                      {"Hypervisor", "kvm"},
                      {"Kind", "Machine"},
                      {"State", "Running"},
                      {"MemoryBytes", "2147483648"},
                      {"VirtualCpus", "4"},
                      {"MacAddresses", "52:54:00:aa:bb:cc"},
                      {"Disks", "/images/web.qcow2; /dev/vg/web"},
                      {"Autostart", "true"},
                      {"Description", "Front end"},
                      {"DefinitionPath", "/etc/libvirt/qemu/web.xml"}}),
              collectOne(machine, "VirtualMachineGuest"));
}

TEST(VirtualMachineGuest, ThatIsNoDefinitionIsSkippedAndCounted) {
    TestMachine machine(
        "etc/libvirt/qemu/cut.xml: <domain><name>x</name>\n"
        "etc/libvirt/qemu/other.xml: <network><name>x</name></network>\n"
        "etc/libvirt/qemu/nameless.xml: <domain type='kvm'/>\n");
    EXPECT_EQ(0U, collectInstances(*machine, "VirtualMachineGuest").size());
    EXPECT_EQ(3U, machine->sources().malformedCount());
}

TEST(VirtualMachineGuest, OfProxmoxIsTheStateBeforeItsSnapshots) {
    TestMachine machine(
        "etc/pve/qemu-server/100.conf:\n"
        "\t#a note\n\tname: db\n\tmemory: 1024\n\tcores: 2\n\tsockets: 2\n\tonboot: 1\n"
        "\tsmbios1: uuid=4C4C4544-0038-3510-8052-B4C04F4A3132,serial=x\n"
        "\tnet0: virtio=BC:24:11:00:00:01,bridge=vmbr0\n"
        "\tscsi0: local:vm-100-disk-0,size=32G\n\tide2: local:iso/x.iso,media=cdrom\n\tscsihw: virtio\n"
        "\t[old]\n\tmemory: 512\n"
        "etc/pve/lxc/101.conf:\n\thostname: box\n\trootfs: local:101/x.raw,size=8G\n"
        "\tnet0: name=eth0,hwaddr=BC:24:11:00:00:02\n");
    const std::vector<Fields> guests = collectInstances(*machine, "VirtualMachineGuest");
    ASSERT_EQ(2U, guests.size());
    EXPECT_EQ((Fields{{"Name", "box"},
                      {"Hypervisor", "lxc"},
                      {"Kind", "Container"},
                      {"MacAddresses", "bc:24:11:00:00:02"},
                      {"Disks", "local:101/x.raw"},
                      {"DefinitionPath", "/etc/pve/lxc/101.conf"}}),
              guests[0]);
    EXPECT_EQ((Fields{{"Name", "db"},
                      {"Uuid", "4c4c4544-0038-3510-8052-b4c04f4a3132"},
                      {"Hypervisor", "kvm"},
                      {"Kind", "Machine"},
                      {"State", "Stopped"},
                      {"MemoryBytes", "1073741824"},
                      {"VirtualCpus", "4"},
                      {"MacAddresses", "bc:24:11:00:00:01"},
                      {"Disks", "local:vm-100-disk-0"},
                      {"Autostart", "true"},
                      {"Description", "a note"},
                      {"DefinitionPath", "/etc/pve/qemu-server/100.conf"}}),
              guests[1]);
}

TEST(VirtualMachineGuest, IsAContainerOfLxcOrNspawn) {
    TestMachine machine(
        "var/lib/lxc/two/config:\n\tlxc.uts.name = inner\n\tlxc.rootfs.path = dir:/var/lib/lxc/two/rootfs\n"
        "\tlxc.net.0.hwaddr = 00:16:3E:00:00:01\n\tlxc.start.auto = 0\n"
        "var/lib/machines/one.raw: image\n"
        "var/lib/machines/.hidden/x: 1\n"
        "run/systemd/machines/one: NAME=one\n");
    const std::vector<Fields> guests = collectInstances(*machine, "VirtualMachineGuest");
    ASSERT_EQ(2U, guests.size());
    EXPECT_EQ((Fields{{"Name", "one"},
                      {"Hypervisor", "systemd-nspawn"},
                      {"Kind", "Container"},
                      {"State", "Running"},
                      {"Autostart", "false"},
                      {"DefinitionPath", "/var/lib/machines/one.raw"}}),
              guests[0]);
    EXPECT_EQ((Fields{{"Name", "two"},
                      {"Hypervisor", "lxc"},
                      {"Kind", "Container"},
                      {"MacAddresses", "00:16:3e:00:00:01"},
                      {"Disks", "dir:/var/lib/lxc/two/rootfs"},
                      {"Autostart", "false"},
                      {"DefinitionPath", "/var/lib/lxc/two/config"}}),
              guests[1]);
}

TEST(VirtualMachineGuest, ThatTwoManagersKnowIsReportedOnce) {
    TestMachine machine(kLibvirt +
                        "etc/pve/qemu-server/100.conf:\n"
                        "\tname: web\n\tsmbios1: uuid=4c4c4544-0038-3510-8052-b4c04f4a3132\n");
    EXPECT_EQ("/etc/libvirt/qemu/web.xml", collectOne(machine, "VirtualMachineGuest").at("DefinitionPath"));
}

}  // namespace
