#include "scanners/zukhw/netlink.h"

#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <string_view>

#include "platform/file_descriptor.h"
#include "scanners/zukhw/machine.h"

namespace {

constexpr std::size_t kBuffer = 32 * 1024;

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

// Asks for all objects of a kind and hands over each; gives up silently when the kernel does not answer.
void dump(std::uint16_t type, unsigned char family, const OnMessage& onMessage) {
    const FileDescriptor fd(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE));
    if (!fd.valid()) return;
    const timeval patience{1, 0};
    ::setsockopt(fd.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    struct {
        nlmsghdr head;
        ifinfomsg body;
    } request{};
    request.head.nlmsg_len = sizeof request;
    request.head.nlmsg_type = type;
    request.head.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.body.ifi_family = family;
    if (::send(fd.get(), &request, sizeof request, 0) != sizeof request) return;
    std::string buffer(kBuffer, '\0');
    for (bool done = false; !done;) {
        const ssize_t count = ::recv(fd.get(), buffer.data(), buffer.size(), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        done = forEachMessage({buffer.data(), static_cast<std::size_t>(count)}, onMessage);
    }
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

}  // namespace

NetlinkLinks::NetlinkLinks(Machine& machine) {
    if (!machine.live()) return;
    dump(RTM_GETLINK, AF_UNSPEC, [&](std::uint16_t type, std::string_view payload) {
        ifinfomsg head{};
        if (type != RTM_NEWLINK || payload.size() < sizeof head) return;
        std::memcpy(&head, payload.data(), sizeof head);
        Link& link = links_[static_cast<std::uint64_t>(head.ifi_index)];
        forEachAttribute(payload.substr(sizeof head), [&](std::uint16_t attribute, std::string_view value) {
            if (attribute == IFLA_LINKINFO) link.infoKind = infoKindOf(value);
            if (attribute == IFLA_PERM_ADDRESS) link.permanentAddress = value;
        });
    });
}

const NetlinkLinks::Link* NetlinkLinks::find(std::uint64_t index) const {
    const auto found = links_.find(index);
    return found == links_.end() ? nullptr : &found->second;
}

std::vector<NetlinkAddress> readIpv4Addresses(Machine& machine) {
    std::vector<NetlinkAddress> addresses;
    if (!machine.live()) return addresses;
    dump(RTM_GETADDR, AF_INET, [&](std::uint16_t type, std::string_view payload) {
        ifaddrmsg head{};
        if (type != RTM_NEWADDR || payload.size() < sizeof head) return;
        std::memcpy(&head, payload.data(), sizeof head);
        NetlinkAddress address;
        address.interfaceIndex = head.ifa_index;
        address.prefixLength = head.ifa_prefixlen;
        address.scope = head.ifa_scope;
        address.flags = head.ifa_flags;
        forEachAttribute(payload.substr(sizeof head), [&](std::uint16_t attribute, std::string_view value) {
            setAttribute(&address, attribute, value);
        });
        if (head.ifa_family == AF_INET) addresses.push_back(std::move(address));
    });
    return addresses;
}
