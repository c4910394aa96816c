#include "scanners/zukhw/hyperv_pool.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

// Written by the guest's daemon, in records of two fields of fixed width, filled up with NULs.
constexpr char kPath[] = "var/lib/hyperv/.kvp_pool_3";
constexpr std::size_t kKey = 512;
constexpr std::size_t kValue = 2048;

std::string_view untilNul(std::string_view field) {
    return field.substr(0, field.find('\0'));
}

}  // namespace

HyperVPool::HyperVPool(Machine& machine) {
    constexpr std::size_t kLimit = std::size_t{1024} * 1024;
    if (machine.exists(kPath)) parse(machine, machine.read(kPath, kLimit).value_or(""));
}

void HyperVPool::parse(Machine& machine, std::string_view data) {
    std::size_t at = 0;
    for (; data.size() - at >= kKey + kValue; at += kKey + kValue) {
        const std::string key = cleanText(untilNul(data.substr(at, kKey)));
        if (!key.empty()) values_[key] = cleanText(untilNul(data.substr(at + kKey, kValue)));
    }
    if (at != data.size()) machine.sources().malformed(kPath, at);
}

std::string HyperVPool::value(const std::string& key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? "" : found->second;
}
