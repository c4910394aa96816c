#include "scanners/zukhw/netlink.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>
#include <functional>
#include <string>
#include <string_view>

#include "platform/file_descriptor.h"
#include "scanners/zukhw/machine.h"

namespace {

constexpr std::size_t kBuffer = 32 * 1024;

// True when it was the last one.
using OnDatagram = std::function<bool(std::string_view)>;

// Asks for all objects of a kind and hands over each datagram of the answer; gives up silently when the
// kernel does not answer.
void dump(std::uint16_t type, unsigned char family, const OnDatagram& onDatagram) {
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
        done = onDatagram({buffer.data(), static_cast<std::size_t>(count)});
    }
}

}  // namespace

NetlinkLinks::NetlinkLinks(Machine& machine) {
    if (!machine.live()) return;
    dump(RTM_GETLINK, AF_UNSPEC,
         [&](std::string_view datagram) { return addNetlinkLinks(datagram, &links_); });
}

const NetlinkLink* NetlinkLinks::find(std::uint64_t index) const {
    const auto found = links_.find(index);
    return found == links_.end() ? nullptr : &found->second;
}

std::vector<NetlinkAddress> readIpv4Addresses(Machine& machine) {
    std::vector<NetlinkAddress> addresses;
    if (!machine.live()) return addresses;
    dump(RTM_GETADDR, AF_INET,
         [&](std::string_view datagram) { return addNetlinkAddresses(datagram, &addresses); });
    return addresses;
}
