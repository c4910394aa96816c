#include "scanners/zukhw/sd_bus.h"

#include <dlfcn.h>

namespace {

template <typename Function>
bool load(void* library, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(::dlsym(library, name));
    return *function != nullptr;
}

}  // namespace

SdBus::SdBus() : library_(::dlopen("libsystemd.so.0", RTLD_LAZY | RTLD_LOCAL)) {
    if (library_ == nullptr) return;
    available_ = load(library_, "sd_bus_new", &create) && load(library_, "sd_bus_unref", &release) &&
                 load(library_, "sd_bus_close", &close) &&
                 load(library_, "sd_bus_set_address", &setAddress) &&
                 load(library_, "sd_bus_set_bus_client", &setBusClient) &&
                 load(library_, "sd_bus_start", &start) && load(library_, "sd_bus_process", &process) &&
                 load(library_, "sd_bus_wait", &wait) && load(library_, "sd_bus_call_async", &callAsync) &&
                 load(library_, "sd_bus_message_new_method_call", &newCall) &&
                 load(library_, "sd_bus_message_set_auto_start", &setAutoStart) &&
                 load(library_, "sd_bus_message_append", &append) &&
                 load(library_, "sd_bus_message_unref", &releaseMessage) &&
                 load(library_, "sd_bus_message_is_method_error", &isError) &&
                 load(library_, "sd_bus_message_enter_container", &enter) &&
                 load(library_, "sd_bus_message_read", &read);
}

SdBus::~SdBus() {
    if (library_ != nullptr) ::dlclose(library_);
}
