#include "scanners/zukhw/local_http.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/file_descriptor.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMaxAnswer = std::size_t{4} << 20U;

// Whether the connection is ready for that before the time is up.
bool waitFor(int fd, short event, Clock::time_point end) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd waiting = {fd, event, 0};
    return left.count() > 0 && ::poll(&waiting, 1, static_cast<int>(left.count())) == 1;
}

FileDescriptor connectTo(const std::string& path) {
    sockaddr_un name = {};
    name.sun_family = AF_UNIX;
    if (path.size() >= sizeof name.sun_path) return FileDescriptor();
    std::memcpy(name.sun_path, path.data(), path.size());
    FileDescriptor fd(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!fd.valid() || ::connect(fd.get(), reinterpret_cast<sockaddr*>(&name), sizeof name) != 0)
        return FileDescriptor();
    return fd;
}

bool sendAll(int fd, std::string_view bytes, Clock::time_point end) {
    while (!bytes.empty()) {
        if (!waitFor(fd, POLLOUT, end)) return false;
        const ssize_t count = ::send(fd, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR) return false;
        if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Until the server closes the connection, as it is asked to.
std::string receiveAll(int fd, Clock::time_point end) {
    std::string answer;
    std::array<char, 16384> block{};
    while (answer.size() < kMaxAnswer && waitFor(fd, POLLIN, end)) {
        const ssize_t count = ::recv(fd, block.data(), block.size(), 0);
        if (count == 0) break;
        if (count < 0 && errno != EAGAIN && errno != EINTR) break;
        if (count > 0) answer.append(block.data(), static_cast<std::size_t>(count));
    }
    return answer;
}

// Parts, each behind a line with its size in hex, up to one of size 0.
std::optional<std::string> joinChunks(std::string_view text) {
    std::string body;
    for (;;) {
        const std::size_t lineEnd = text.find("\r\n");
        if (lineEnd == std::string_view::npos) return std::nullopt;
        const std::string_view line = text.substr(0, lineEnd);
        const auto size = parseHex(line.substr(0, line.find(';')));
        text.remove_prefix(lineEnd + 2);
        if (!size || *size > text.size()) return std::nullopt;
        if (*size == 0) return body;
        body.append(text.substr(0, *size));
        text.remove_prefix(*size);
        if (!startsWith(text, "\r\n")) return std::nullopt;
        text.remove_prefix(2);
    }
}

}  // namespace

std::optional<std::string> bodyOfHttpAnswer(std::string_view answer) {
    constexpr std::string_view kEnd = "\r\n\r\n";
    const std::size_t end = answer.find(kEnd);
    if (end == std::string_view::npos) return std::nullopt;
    const std::string head = toLower(answer.substr(0, end));
    const std::string_view rest = answer.substr(end + kEnd.size());
    const std::vector<std::string_view> status = words(std::string_view(head).substr(0, head.find('\r')));
    if (status.size() < 2 || !startsWith(status[0], "http/1.") || status[1] != "200") return std::nullopt;
    if (findValue(head, "transfer-encoding", ':') == "chunked") return joinChunks(rest);
    const auto length = parseDecimal(findValue(head, "content-length", ':').value_or(""));
    if (length && *length > rest.size()) return std::nullopt;
    return std::string(rest.substr(0, length.value_or(rest.size())));
}

std::optional<std::string> postLocally(const std::string& path, std::string_view contentType,
                                       std::string_view body, std::chrono::milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    const FileDescriptor fd = connectTo(path);
    if (!fd.valid()) return std::nullopt;
    std::string request = "POST / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nContent-Type: ";
    request.append(contentType).append("\r\nContent-Length: ").append(std::to_string(body.size()));
    request.append("\r\n\r\n").append(body);
    if (!sendAll(fd.get(), request, end)) return std::nullopt;
    return bodyOfHttpAnswer(receiveAll(fd.get(), end));
}
