#include "scanners/zukhw/netlink_messages.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace {

using namespace std::string_literals;

template <typename Head>
std::string bytesOf(const Head& head) {
    return {reinterpret_cast<const char*>(&head), sizeof head};
}

std::string padded(std::string bytes) {
    bytes.resize((bytes.size() + NLMSG_ALIGNTO - 1) / NLMSG_ALIGNTO * NLMSG_ALIGNTO);
    return bytes;
}

std::string attribute(unsigned type, const std::string& value) {
    rtattr head{};
    head.rta_len = static_cast<unsigned short>(sizeof head + value.size());
    head.rta_type = static_cast<unsigned short>(type);
    return padded(bytesOf(head) + value);
}

std::string message(unsigned type, const std::string& payload) {
    nlmsghdr head{};
    head.nlmsg_len = static_cast<std::uint32_t>(sizeof head + payload.size());
    head.nlmsg_type = static_cast<std::uint16_t>(type);
    return padded(bytesOf(head) + payload);
}

std::string link(int index, const std::string& attributes) {
    ifinfomsg head{};
    head.ifi_index = index;
    return message(RTM_NEWLINK, bytesOf(head) + attributes);
}

std::string address(unsigned char prefixLength, const std::string& attributes) {
    ifaddrmsg head{};
    head.ifa_family = AF_INET;
    head.ifa_prefixlen = prefixLength;
    head.ifa_index = 2;
    return message(RTM_NEWADDR, bytesOf(head) + attributes);
}

TEST(NetlinkMessages, ALinkHasItsKindAndItsPermanentAddress) {
    std::map<std::uint64_t, NetlinkLink> links;
    EXPECT_FALSE(addNetlinkLinks(link(2, attribute(IFLA_LINKINFO, attribute(IFLA_INFO_KIND, "veth\0"s)) +
                                             attribute(IFLA_PERM_ADDRESS, "\x02\0\0\0\0\1"s)),
                                 &links));
    ASSERT_EQ(1U, links.count(2));
    EXPECT_EQ("veth", links[2].infoKind);
    EXPECT_EQ("\x02\0\0\0\0\1"s, links[2].permanentAddress);
}

TEST(NetlinkMessages, AnAddressHasWhatItsAttributesTell) {
    std::vector<NetlinkAddress> addresses;
    addNetlinkAddresses(address(24, attribute(IFA_LOCAL, "\xC0\0\2\1"s) + attribute(IFA_LABEL, "eth0\0"s) +
                                        attribute(IFA_FLAGS, "\x80\0\0\0"s)),
                        &addresses);
    ASSERT_EQ(1U, addresses.size());
    EXPECT_EQ(2U, addresses[0].interfaceIndex);
    EXPECT_EQ(24U, addresses[0].prefixLength);
    EXPECT_EQ(inet_addr("192.0.2.1"), addresses[0].local);
    EXPECT_EQ("eth0", addresses[0].label);
    EXPECT_FALSE(addresses[0].broadcast);
}

TEST(NetlinkMessages, AnAddressWithAnImpossiblePrefixIsLeftOut) {
    std::vector<NetlinkAddress> addresses;
    addNetlinkAddresses(address(33, ""), &addresses);
    EXPECT_TRUE(addresses.empty());
}

TEST(NetlinkMessages, TheLastMessageIsToldAndWhatFollowsItIsNot) {
    std::map<std::uint64_t, NetlinkLink> links;
    for (const unsigned type : {NLMSG_DONE, NLMSG_ERROR}) {
        EXPECT_TRUE(addNetlinkLinks(message(type, "\0\0\0\0"s) + link(2, ""), &links));
    }
    EXPECT_TRUE(links.empty());
}

TEST(NetlinkMessages, LengthsBeyondTheirBytesEndTheReading) {
    std::map<std::uint64_t, NetlinkLink> links;
    const std::string whole = link(2, attribute(IFLA_PERM_ADDRESS, "123456"));
    for (std::size_t size = 0; size < whole.size() - 2; ++size) {
        addNetlinkLinks(std::string_view(whole).substr(0, size), &links);
        EXPECT_TRUE(links.empty()) << size;
    }
}

}  // namespace
