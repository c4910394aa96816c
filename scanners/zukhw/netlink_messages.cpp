#include "scanners/zukhw/netlink_messages.h"

#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <functional>

namespace {

using OnMessage = std::function<void(std::uint16_t type, std::string_view payload)>;
using OnAttribute = std::function<void(std::uint16_t type, std::string_view value)>;

std::size_t aligned(std::size_t length) {
    return (length + NLMSG_ALIGNTO - 1) & ~std::size_t{NLMSG_ALIGNTO - 1};
}

// Goes through the type-length-value records of a message.
void forEachAttribute(std::string_view bytes, const OnAttribute& onAttribute) {
    rtattr head{};
    while (bytes.size() >= sizeof head) {
        std::memcpy(&head, bytes.data(), sizeof head);
        if (head.rta_len < sizeof head || head.rta_len > bytes.size()) return;
        onAttribute(head.rta_type & NLA_TYPE_MASK, bytes.substr(sizeof head, head.rta_len - sizeof head));
        bytes.remove_prefix(std::min(aligned(head.rta_len), bytes.size()));
    }
}

// True when the last message of the answer was among these.
bool forEachMessage(std::string_view bytes, const OnMessage& onMessage) {
    nlmsghdr head{};
    while (bytes.size() >= sizeof head) {
        std::memcpy(&head, bytes.data(), sizeof head);
        if (head.nlmsg_len < sizeof head || head.nlmsg_len > bytes.size()) return true;
        if (head.nlmsg_type == NLMSG_DONE || head.nlmsg_type == NLMSG_ERROR) return true;
        onMessage(head.nlmsg_type, bytes.substr(sizeof head, head.nlmsg_len - sizeof head));
        bytes.remove_prefix(std::min(aligned(head.nlmsg_len), bytes.size()));
    }
    return false;
}

// The text in an attribute, which may or may not have its NUL with it.
std::string textOf(std::string_view value) {
    return std::string(value.substr(0, value.find('\0')));
}

std::optional<std::uint32_t> wordOf(std::string_view value) {
    std::uint32_t word = 0;
    if (value.size() != sizeof word) return std::nullopt;
    std::memcpy(&word, value.data(), sizeof word);
    return word;
}

std::string infoKindOf(std::string_view linkInfo) {
    std::string kind;
    forEachAttribute(linkInfo, [&](std::uint16_t type, std::string_view value) {
        if (type == IFLA_INFO_KIND) kind = textOf(value);
    });
    return kind;
}

void setAttribute(NetlinkAddress* address, std::uint16_t type, std::string_view value) {
    const auto word = wordOf(value);
    if (type == IFA_LABEL) address->label = textOf(value);
    if (!word) return;
    if (type == IFA_LOCAL) address->local = *word;
    if (type == IFA_ADDRESS) address->peer = word;
    if (type == IFA_BROADCAST) address->broadcast = word;
    if (type == IFA_FLAGS) address->flags = *word;
}

void addLink(std::string_view payload, std::map<std::uint64_t, NetlinkLink>* links) {
    ifinfomsg head{};
    if (payload.size() < sizeof head) return;
    std::memcpy(&head, payload.data(), sizeof head);
    if (head.ifi_index <= 0) return;
    NetlinkLink& link = (*links)[static_cast<std::uint64_t>(head.ifi_index)];
    forEachAttribute(payload.substr(sizeof head), [&](std::uint16_t attribute, std::string_view value) {
        if (attribute == IFLA_LINKINFO) link.infoKind = infoKindOf(value);
        if (attribute == IFLA_PERM_ADDRESS) link.permanentAddress = value;
    });
}

void addAddress(std::string_view payload, std::vector<NetlinkAddress>* addresses) {
    ifaddrmsg head{};
    if (payload.size() < sizeof head) return;
    std::memcpy(&head, payload.data(), sizeof head);
    NetlinkAddress address;
    address.interfaceIndex = head.ifa_index;
    address.prefixLength = head.ifa_prefixlen;
    address.scope = head.ifa_scope;
    address.flags = head.ifa_flags;
    forEachAttribute(payload.substr(sizeof head), [&](std::uint16_t attribute, std::string_view value) {
        setAttribute(&address, attribute, value);
    });
    constexpr unsigned kBits = 32;
    if (head.ifa_family == AF_INET && address.prefixLength <= kBits) addresses->push_back(std::move(address));
}

}  // namespace

bool addNetlinkLinks(std::string_view datagram, std::map<std::uint64_t, NetlinkLink>* links) {
    return forEachMessage(datagram, [&](std::uint16_t type, std::string_view payload) {
        if (type == RTM_NEWLINK) addLink(payload, links);
    });
}

bool addNetlinkAddresses(std::string_view datagram, std::vector<NetlinkAddress>* addresses) {
    return forEachMessage(datagram, [&](std::uint16_t type, std::string_view payload) {
        if (type == RTM_NEWADDR) addAddress(payload, addresses);
    });
}
