#include "scanners/zukhw/partition_files.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/parse.h"

LparConfig::LparConfig(Machine& machine) : text_(machine.text("proc/ppc64/lparcfg")) {}

std::string_view LparConfig::value(std::string_view key) const {
    return findValue(text_, key, '=').value_or("");
}

SysInfo::SysInfo(Machine& machine) : text_(machine.text("proc/sysinfo")) {}

std::string_view SysInfo::value(std::string_view key) const {
    return findValue(text_, key, ':').value_or("");
}
