#include "scanners/zukhw/meminfo.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"

Meminfo::Meminfo(Machine& machine) : text_(machine.text("proc/meminfo")) {}

std::optional<std::uint64_t> Meminfo::bytes(std::string_view key) const {
    const auto value = findValue(text_, key, ':');
    return value ? parseKibibytes(*value) : std::nullopt;
}

std::optional<std::uint64_t> Meminfo::count(std::string_view key) const {
    const auto value = findValue(text_, key, ':');
    return value ? parseDecimal(*value) : std::nullopt;
}
