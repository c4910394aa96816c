#pragma once

#include <systemd/sd-bus.h>

#include <functional>
#include <string>
#include <thread>

#include "tests/support/temporary_folder.h"

// A bus with one client, on a socket of the test's own. It is gone with the object.
class FakeBus {
  public:
    // Answers one call of a method; what it leaves unanswered stays so.
    using Answer = std::function<void(sd_bus_message* call)>;

    explicit FakeBus(Answer answer);
    ~FakeBus();
    FakeBus(const FakeBus&) = delete;
    FakeBus& operator=(const FakeBus&) = delete;

    std::string address() const { return "unix:path=" + folder_.path() + "/bus"; }

  private:
    void serve();

    TemporaryFolder folder_;
    Answer answer_;
    int listening_ = -1;
    int stop_[2] = {-1, -1};  // a pipe that is closed to end the thread
    std::thread thread_;
};
