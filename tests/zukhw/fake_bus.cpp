#include "tests/zukhw/fake_bus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

FakeBus::FakeBus(Answer answer) : answer_(std::move(answer)) {
    sockaddr_un name = {};
    name.sun_family = AF_UNIX;
    std::strncpy(name.sun_path, (folder_.path() + "/bus").c_str(), sizeof name.sun_path - 1);
    listening_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (::bind(listening_, reinterpret_cast<sockaddr*>(&name), sizeof name) != 0 ||
        ::listen(listening_, 1) != 0 || ::pipe(stop_) != 0)
        throw std::runtime_error("no socket for the bus");
    thread_ = std::thread([this] { serve(); });
}

FakeBus::~FakeBus() {
    ::close(stop_[1]);
    thread_.join();
    ::close(stop_[0]);
    ::close(listening_);
}

void FakeBus::serve() {
    pollfd waiting[2] = {{listening_, POLLIN, 0}, {stop_[0], POLLIN, 0}};
    if (::poll(waiting, 2, -1) < 0 || waiting[1].revents != 0) return;
    const int client = ::accept(listening_, nullptr, nullptr);
    sd_bus* bus = nullptr;
    sd_id128_t id = {};
    sd_bus_new(&bus);
    sd_bus_set_fd(bus, client, client);
    sd_bus_set_server(bus, 1, id);
    sd_bus_start(bus);
    while (waiting[1].revents == 0) {
        sd_bus_message* message = nullptr;
        const int processed = sd_bus_process(bus, &message);
        if (message != nullptr && sd_bus_message_is_method_call(message, nullptr, "Hello") > 0) {
            sd_bus_reply_method_return(message, "s", ":1.1");
        } else if (message != nullptr && sd_bus_message_is_method_call(message, nullptr, nullptr) > 0) {
            answer_(message);
        }
        sd_bus_message_unref(message);
        if (processed < 0) break;
        if (processed > 0) continue;
        waiting[0] = {client, static_cast<short>(sd_bus_get_events(bus)), 0};
        ::poll(waiting, 2, -1);
    }
    sd_bus_close(bus);
    sd_bus_unref(bus);
}
