#pragma once

#include <systemd/sd-bus.h>

// The functions of libsystemd that talk to a bus. The library is opened when it is needed, because few scans
// need it and few machines without a bus have it.
class SdBus {
  public:
    SdBus();
    ~SdBus();
    SdBus(const SdBus&) = delete;
    SdBus& operator=(const SdBus&) = delete;

    // False when there is no such library here. Nothing else may be used then.
    bool available() const { return available_; }

    decltype(&::sd_bus_new) create = nullptr;
    decltype(&::sd_bus_unref) release = nullptr;
    decltype(&::sd_bus_close) close = nullptr;
    decltype(&::sd_bus_set_address) setAddress = nullptr;
    decltype(&::sd_bus_set_bus_client) setBusClient = nullptr;
    decltype(&::sd_bus_start) start = nullptr;
    decltype(&::sd_bus_process) process = nullptr;
    decltype(&::sd_bus_wait) wait = nullptr;
    decltype(&::sd_bus_call_async) callAsync = nullptr;
    decltype(&::sd_bus_message_new_method_call) newCall = nullptr;
    decltype(&::sd_bus_message_set_auto_start) setAutoStart = nullptr;
    decltype(&::sd_bus_message_append) append = nullptr;
    decltype(&::sd_bus_message_unref) releaseMessage = nullptr;
    decltype(&::sd_bus_message_is_method_error) isError = nullptr;
    decltype(&::sd_bus_message_enter_container) enter = nullptr;
    decltype(&::sd_bus_message_read) read = nullptr;

  private:
    void* library_;
    bool available_ = false;
};
