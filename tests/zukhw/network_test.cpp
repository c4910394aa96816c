// The groups NetworkAdapter and IPAddress, and the readers below them.
#include <gtest/gtest.h>

#include "scanners/zukhw/device_path.h"
#include "scanners/zukhw/ipv4.h"
#include "scanners/zukhw/net_interfaces.h"
#include "scanners/zukhw/net_kind.h"
#include "scanners/zukhw/resolver.h"
#include "tests/zukhw/test_machine.h"

namespace {

struct KindCase {
    NetKindClues clues;
    const char* kind;
};

TEST(NetKind, GoesByTheBestClueThatThereIs) {
    const KindCase cases[] = {
        {{"", "", "1", {"device"}}, "Ethernet"},
        {{"wlan", "", "1", {}}, "WiFi"},
        {{"", "", "1", {"phy80211"}}, "WiFi"},
        {{"wwan", "", "65534", {}}, "Wwan"},
        {{"dsa", "", "1", {"device"}}, "Ethernet"},  // a port of a switch
        {{"", "", "32", {}}, "Infiniband"},
        {{"", "", "772", {}}, "Loopback"},
        {{"bridge", "", "1", {"bridge"}}, "Bridge"},
        {{"", "", "1", {"bonding"}}, "Bond"},
        {{"", "team", "1", {}}, "Team"},
        {{"vlan", "vlan", "1", {}}, "Vlan"},
        {{"", "veth", "1", {}}, "Veth"},
        {{"", "macvtap", "1", {}}, "Macvlan"},
        {{"", "", "65534", {"tun_flags"}}, "Tun"},
        {{"", "wireguard", "65534", {}}, "WireGuard"},
        {{"", "vcan", "280", {}}, "Can"},
        {{"", "", "776", {}}, "Other"},      // a tunnel without a clue
        {{"", "geneve", "1", {}}, "Other"},  // one that we have no name for
    };
    for (const KindCase& c : cases)
        EXPECT_EQ(c.kind, netKind(c.clues)) << c.clues.deviceType << c.clues.infoKind;
}

TEST(DevicePath, FindsWhatADeviceHangsOn) {
    const std::string path = "sys/devices/pci0000:00/0000:00:14.0/usb1/1-1/1-1.4/1-1.4:1.0/net/eth0";
    EXPECT_EQ("sys/devices/pci0000:00/0000:00:14.0", pciAncestor(path));
    EXPECT_EQ("sys/devices/pci0000:00/0000:00:14.0/usb1/1-1/1-1.4", usbAncestor(path));
    EXPECT_EQ("sys/devices/pci10000:e0/10000:e1:00.0",
              pciAncestor("sys/devices/pci10000:e0/10000:e1:00.0/nvme/nvme0"));
    EXPECT_EQ("", pciAncestor("sys/devices/virtual/net/lo"));
    EXPECT_EQ("", usbAncestor("sys/devices/virtual/net/lo"));
}

TEST(MacAddress, HasSixOrTwentyBytesThatAreNotAllZero) {
    EXPECT_EQ("02:fc:00:00:00:01", cleanMacAddress("02:FC:00:00:00:01\n"));
    EXPECT_EQ("", cleanMacAddress("00:00:00:00:00:00"));
    EXPECT_EQ("", cleanMacAddress("0a:00:00:01"));  // a tunnel's address is no MAC
    EXPECT_EQ("", cleanMacAddress("zz:fc:00:00:00:01"));
    EXPECT_EQ("", cleanMacAddress("0:2fc:00:00:00:01"));
    EXPECT_EQ(59U, cleanMacAddress("80:00:00:48:fe:80:00:00:00:00:00:00:f4:52:14:03:00:7b:cb:a1").size());
}

const std::string kDevice = "sys/devices/pci0000:00/0000:00:03.0/";

TEST(NetworkAdapter, DescribesACard) {
    TestMachine machine("sys/class/net/eth0 -> ../../" + kDevice.substr(4) + "net/eth0\n" + kDevice +
                        "net/eth0/device -> ../..\n" + kDevice + "net/eth0/ifindex: 2\n" + kDevice +
                        "net/eth0/address: 02:FC:00:00:00:01\n" + kDevice + "net/eth0/type: 1\n" + kDevice +
                        "net/eth0/mtu: 1500\n" + kDevice + "net/eth0/operstate: up\n" + kDevice +
                        "net/eth0/carrier: 1\n" + kDevice + "net/eth0/speed: 1000\n" + kDevice +
                        "net/eth0/duplex: full\n" + kDevice + "net/eth0/dev_port: 0\n" + kDevice +
                        "vendor: 0x8086\n" + kDevice + "device: 0x1533\n" + kDevice +
                        "subsystem_vendor: 0x15d9\n" + kDevice + "subsystem_device: 0x1533\n" + kDevice +
                        "numa_node: -1\n" + kDevice +
                        "driver -> ../../../bus/pci/drivers/igb\n"
                        "usr/share/misc/pci.ids:\n\t8086  Intel Corporation\n\t\t1533  I210\n");
    EXPECT_EQ((Fields{{"InterfaceName", "eth0"},
                      {"InterfaceIndex", "2"},
                      {"Kind", "Ethernet"},
                      {"Physical", "true"},
                      {"MacAddress", "02:fc:00:00:00:01"},
                      {"Mtu", "1500"},
                      {"OperState", "up"},
                      {"Carrier", "true"},
                      {"SpeedMbps", "1000"},
                      {"Duplex", "full"},
                      {"Driver", "igb"},
                      {"Vendor", "Intel Corporation"},
                      {"Model", "I210"},
                      {"VendorId", "8086"},
                      {"DeviceId", "1533"},
                      {"SubsystemVendorId", "15d9"},
                      {"SubsystemDeviceId", "1533"},
                      {"BusAddress", "0000:00:03.0"},
                      {"PortNumber", "0"}}),
              collectOne(machine, "NetworkAdapter"));
}

TEST(NetworkAdapter, LeavesOutASpeedThatIsNone) {
    for (const char* speed : {"-1", "0", "4294967295"}) {
        TestMachine machine(std::string("sys/class/net/a/ifindex: 1\nsys/class/net/a/speed: ") + speed +
                            "\n");
        EXPECT_EQ(0U, collectOne(machine, "NetworkAdapter").count("SpeedMbps")) << speed;
    }
}

TEST(NetworkAdapter, DescribesABondAndItsMembers) {
    TestMachine machine(
        "sys/class/net/bonding_masters: bond0\n"
        "sys/class/net/bond0/ifindex: 9\nsys/class/net/bond0/bonding/mode: active-backup 1\n"
        "sys/class/net/bond0/bonding/active_slave: eth10\n"
        "sys/class/net/bond0/lower_eth10 -> ../eth10\nsys/class/net/bond0/lower_eth2 -> ../eth2\n"
        "sys/class/net/eth2/ifindex: 2\nsys/class/net/eth2/master -> ../bond0\n"
        "sys/class/net/eth2/bonding_slave/perm_hwaddr: 02:00:00:00:00:02\n");
    const std::vector<Fields> adapters = collectInstances(*machine, "NetworkAdapter");
    ASSERT_EQ(2U, adapters.size());
    EXPECT_EQ("bond0", adapters[0].at("Master"));
    EXPECT_EQ("02:00:00:00:00:02", adapters[0].at("PermanentMacAddress"));
    EXPECT_EQ("Bond", adapters[1].at("Kind"));
    EXPECT_EQ("active-backup", adapters[1].at("BondMode"));
    EXPECT_EQ("eth10", adapters[1].at("ActiveMember"));
    EXPECT_EQ("eth2; eth10", adapters[1].at("Members"));
}

TEST(NetworkAdapter, TellsTheNumberOfAVlan) {
    TestMachine machine(
        "sys/class/net/eth0.5/ifindex: 3\nsys/class/net/eth0.5/uevent: DEVTYPE=vlan\n"
        "proc/net/vlan/eth0.5:\n\teth0.5  VID: 5\t REORDER_HDR: 1\n");
    const Fields adapter = collectOne(machine, "NetworkAdapter");
    EXPECT_EQ("Vlan", adapter.at("Kind"));
    EXPECT_EQ("5", adapter.at("VlanId"));
}

const std::string kFibTrie =
    "proc/net/fib_trie:\n\tMain:\n\t  +-- 0.0.0.0/0 3 0 5\n\tLocal:\n\t     |-- 127.0.0.0\n\t        /8 host "
    "LOCAL\n"
    "\t     |-- 127.0.0.1\n\t        /32 host LOCAL\n\t     |-- 192.168.1.2\n\t        /32 host LOCAL\n"
    "\t     |-- 192.168.1.255\n\t        /32 link BROADCAST\n\t     |-- 192.168.1.2\n\t        /32 host "
    "LOCAL\n";
const std::string kRoute =
    "proc/net/route:\n\tIface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\n"
    "\teth0\t00000000\t0101A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0\n"
    "\teth0\t00000000\tFE01A8C0\t0003\t0\t0\t200\t00000000\t0\t0\t0\n"
    "\teth0\t0001A8C0\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n";

TEST(IPAddress, OfACopyComesFromItsRoutes) {
    TestMachine machine(
        kFibTrie + kRoute +
        "proc/sys/kernel/arch: x86_64\nsys/class/net/eth0/ifindex: 2\n"
        "sys/class/net/eth0/address: 02:00:00:00:00:01\nsys/class/net/lo/ifindex: 1\n"
        "etc/resolv.conf:\n\t# comment\n\tnameserver 9.9.9.9\n\tnameserver 1.1.1.1\n\tsearch a.org b.org\n");
    const std::vector<Fields> addresses = collectInstances(*machine, "IPAddress");
    ASSERT_EQ(2U, addresses.size());
    EXPECT_EQ("127.0.0.1", addresses[0].at("Address"));
    EXPECT_EQ("lo", addresses[0].at("InterfaceName"));
    EXPECT_EQ((Fields{{"InterfaceName", "eth0"},
                      {"Address", "192.168.1.2"},
                      {"PrefixLength", "24"},
                      {"SubnetMask", "255.255.255.0"},
                      {"Network", "192.168.1.0"},
                      {"Gateway", "192.168.1.1"},
                      {"MacAddress", "02:00:00:00:00:01"},
                      {"DnsServers", "9.9.9.9; 1.1.1.1"},
                      {"DnsSearch", "a.org; b.org"}}),
              addresses[1]);
}

TEST(Routes, OfABigEndianMachineAreReadAsItWroteThem) {
    TestMachine machine(
        "proc/sys/kernel/arch: s390x\nproc/net/route:\n"
        "\teth0\t00000000\tC0A80101\t0003\t0\t0\t0\t00000000\t0\t0\t0\n");
    EXPECT_EQ((std::vector<std::string>{"192.168.1.1"}), machine->shared<Ipv4Routes>().gatewaysOf("eth0"));
}

TEST(Routes, ThatAreBrokenAreCounted) {
    TestMachine machine("proc/net/route:\n\teth0 x y\n\teth0 00000000 0101A8C0 zz 0 0 0 00000000 0 0 0\n");
    EXPECT_TRUE(machine->shared<Ipv4Routes>().all().empty());
    EXPECT_EQ(2U, machine->sources().malformedCount());
}

TEST(Ipv4, MasksCoverAllLengths) {
    EXPECT_EQ(0U, ipv4Mask(0));
    EXPECT_EQ(0xFFFFFF00U, ipv4Mask(24));
    EXPECT_EQ(0xFFFFFFFFU, ipv4Mask(32));
    EXPECT_EQ("10.0.0.255", ipv4Text(0x0A0000FF));
}

TEST(Resolver, LooksBehindTheStub) {
    const std::string stub = "etc/resolv.conf: nameserver 127.0.0.53\n";
    TestMachine behind(stub + "run/systemd/resolve/resolv.conf: nameserver 10.0.0.1\n");
    EXPECT_EQ((std::vector<std::string>{"10.0.0.1"}), behind->shared<Resolver>().servers());
    TestMachine alone(stub);
    EXPECT_EQ((std::vector<std::string>{"127.0.0.53"}), alone->shared<Resolver>().servers());
}

}  // namespace
