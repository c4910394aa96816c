#include "scanners/zukhw/lparcfg.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"

Lparcfg::Lparcfg(Machine& machine) : text_(machine.text("proc/ppc64/lparcfg")) {}

std::string_view Lparcfg::value(std::string_view key) const {
    return findValue(text_, key, '=').value_or("");
}

std::optional<std::uint64_t> Lparcfg::number(std::string_view key) const {
    return parseDecimal(value(key));
}
