// The groups IPv6Address and IPXAddress.
#include "scanners/zukhw/ipv6.h"

#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

struct TextCase {
    const char* hex;
    const char* text;
};

TEST(Ipv6Text, IsTheShortestForm) {
    const TextCase cases[] = {
        {"00000000000000000000000000000000", "::"},
        {"00000000000000000000000000000001", "::1"},
        {"fe8000000000000000fc00fffe000001", "fe80::fc:ff:fe00:1"},
        {"20010db8000000000001000000000001", "2001:db8::1:0:0:1"},
        {"20010db8000100010001000100000001", "2001:db8:1:1:1:1:0:1"},
        {"20010DB8AAAA00010001000100010001", "2001:db8:aaaa:1:1:1:1:1"},
    };
    for (const TextCase& c : cases) {
        const auto bytes = parseIpv6Hex(c.hex);
        ASSERT_TRUE(bytes) << c.hex;
        EXPECT_EQ(c.text, ipv6Text(*bytes));
    }
}

TEST(Ipv6Hex, IsThirtyTwoDigits) {
    for (const char* hex :
         {"", "fe80", "fe8000000000000000fc00fffe00000x", "0xfe800000000000000fc00fffe00001"}) {
        EXPECT_FALSE(parseIpv6Hex(hex)) << hex;
    }
}

const std::string kEthernet =
    "sys/class/net/eth0/ifindex: 4\n"
    "sys/class/net/eth0/address: 02:FC:00:00:00:01\n";

struct NetworkCase {
    const char* prefixLength;  // in hex
    const char* network;
};

TEST(IPv6Address, LiesInANetworkOfAnyLength) {
    const NetworkCase cases[] = {{"80", "2001:db8:ffff:ffff:ffff:ffff:ffff:ffff"},
                                 {"40", "2001:db8:ffff:ffff::"},
                                 {"24", "2001:db8:f000::"},
                                 {"00", "::"}};
    for (const NetworkCase& c : cases) {
        TestMachine machine(std::string("proc/net/if_inet6: 20010db8ffffffffffffffffffffffff 04 ") +
                            c.prefixLength + " 00 80 eth0\n");
        EXPECT_EQ(c.network, collectOne(machine, "IPv6Address").at("Network")) << c.prefixLength;
    }
}

TEST(IPv6Address, ComesByInterfaceAndAddress) {
    TestMachine machine(kEthernet +
                        "proc/net/if_inet6:\n"
                        "\tfe8000000000000000fc00fffe000001 04 40 20 80     eth0\n"
                        "\tfd000000000000000000000000000002 04 40 00 21     eth0\n"
                        "\t00000000000000000000000000000001 01 80 10 80       lo\n"
                        "proc/net/ipv6_route:\n"
                        "\t00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
                        "fd000000000000000000000000000001 00000400 00000002 00000000 00000003     eth0\n"
                        "\t00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
                        "fd000000000000000000000000000009 00000401 00000002 00000000 00000003     eth0\n"
                        "\t00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
                        "00000000000000000000000000000000 ffffffff 00000001 00000000 00200200       lo\n");
    const std::vector<Fields> addresses = collectInstances(*machine, "IPv6Address");
    ASSERT_EQ(3U, addresses.size());
    EXPECT_EQ("::1", addresses[0].at("Address"));
    EXPECT_EQ("host", addresses[0].at("Scope"));
    EXPECT_EQ(0U, addresses[0].count("Gateway"));
    EXPECT_EQ((Fields{{"InterfaceName", "eth0"},
                      {"Address", "fd00::2"},
                      {"PrefixLength", "64"},
                      {"Network", "fd00::"},
                      {"Scope", "global"},
                      {"Permanent", "false"},
                      {"Temporary", "true"},
                      {"Deprecated", "true"},
                      {"Tentative", "false"},
                      {"DadFailed", "false"},
                      {"Gateway", "fd00::1"},
                      {"MacAddress", "02:fc:00:00:00:01"}}),
              addresses[1]);
    EXPECT_EQ("fe80::fc:ff:fe00:1", addresses[2].at("Address"));
}

TEST(IPv6Address, SkipsAndCountsBrokenLines) {
    TestMachine machine(
        "proc/net/if_inet6:\n"
        "\tfe80 04 40 20 80 eth0\n"
        "\tfe8000000000000000fc00fffe000001 04 81 20 80 eth0\n"
        "\tfe8000000000000000fc00fffe000001 04 40 20 80\n");
    EXPECT_EQ(0U, collectInstances(*machine, "IPv6Address").size());
    EXPECT_EQ(3U, machine->sources().malformedCount());
}

TEST(IPXAddress, IsALineOfEitherTable) {
    for (const char* table : {"proc/net/ipx/interface", "proc/net/ipx_interface"}) {
        TestMachine machine(std::string(table) +
                            ":\n"
                            "\tNetwork    Node_Address   Primary  Device     Frame_Type\n"
                            "\t0000A001   00001B0A1234   Yes      eth0       802.2\n"
                            "\tC0FFEE01   000000000001   No       Internal   None\n");
        const std::vector<Fields> addresses = collectInstances(*machine, "IPXAddress");
        ASSERT_EQ(2U, addresses.size()) << table;
        EXPECT_EQ((Fields{{"Network", "0000a001"},
                          {"NodeAddress", "00001b0a1234"},
                          {"Primary", "true"},
                          {"Device", "eth0"},
                          {"FrameType", "802.2"}}),
                  addresses[0]);
        EXPECT_EQ(0U, addresses[1].count("FrameType"));
    }
}

}  // namespace
