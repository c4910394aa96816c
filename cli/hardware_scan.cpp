#include "cli/hardware_scan.h"

#include <algorithm>

#include "cli/failure.h"

namespace {

constexpr int kLastGroup = 51;
constexpr int kConfigurationNotWritten = 102;
constexpr int kScannerFailed = 103;

}  // namespace

HardwareScan::HardwareScan(const Library& library) : library_(library) {
    ZUKHwCtx* context = nullptr;
    require(ZUK_hw_init(library.get(), library.logCallback(), nullptr, &context), "ZUK_hw_init");
    context_.reset(context);
}

std::vector<Group> HardwareScan::groups() const {
    std::vector<Group> groups;
    for (int number = 1; number <= kLastGroup; ++number) {
        const wchar_t* name = nullptr;
        // Some numbers name no group.
        if (ZUK_hw_get_group_name(context_.get(), number, &name) == 0) groups.push_back({number, name, {}});
    }
    return groups;
}

void HardwareScan::enable(const Group& group) {
    require(ZUK_hw_setopt(context_.get(), group.number, 1), "ZUK_hw_setopt");
}

void HardwareScan::run() {
    const int status = ZUK_hw_run(context_.get());
    if (status == 0) return;
    if (status == kConfigurationNotWritten) {
        throw Failure(kScanFailed, withStatus("the scanner's configuration file could not be written: is the "
                                              "disk full? TEMP names another directory for it",
                                              status));
    }
    if (status == kScannerFailed) {
        int exitStatus = -1;
        ZUK_hw_get_returncode(context_.get(), &exitStatus);
        throw Failure(kScanFailed,
                      withStatus(scannerFailure("hardware scanner", "zukhw", exitStatus, library_), status));
    }
    throw Failure(kScanFailed, withStatus("what the hardware scanner of " + library_.homeInWords() +
                                              " wrote could not be read: -v shows where it is wrong",
                                          status));
}

void HardwareScan::read(Group& group) const {
    int instances = 0;
    require(ZUK_hw_get_group_instances(context_.get(), group.number, &instances),
            "ZUK_hw_get_group_instances");
    for (int i = 0; i < instances; ++i) {
        const wchar_t** names = nullptr;
        int count = 0;
        require(ZUK_hw_get_fields(context_.get(), group.number, i, &names, &count), "ZUK_hw_get_fields");
        Instance instance;
        for (int n = 0; n < count; ++n) {
            const auto same = [&](const auto& field) { return field.first == names[n]; };
            // Only the first of equal names can be asked for.
            if (std::any_of(instance.begin(), instance.end(), same)) continue;
            const wchar_t* value = nullptr;
            require(ZUK_hw_get_value(context_.get(), group.number, i, names[n], &value), "ZUK_hw_get_value");
            instance.emplace_back(names[n], value);
        }
        group.instances.push_back(std::move(instance));
    }
}
