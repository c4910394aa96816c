#pragma once

#include <string>
#include <string_view>

class Machine;

// What a POWER system is told of its partition: lines "key=value" of /proc/ppc64/lparcfg;
// machine.shared<LparConfig>().
class LparConfig {
  public:
    explicit LparConfig(Machine& machine);

    bool available() const { return !text_.empty(); }
    // Empty when there is no such line.
    std::string_view value(std::string_view key) const;

  private:
    std::string text_;
};

// What an s390 system is told of the machine, its partition and its hypervisor: lines "Key:   value" of
// /proc/sysinfo; machine.shared<SysInfo>().
class SysInfo {
  public:
    explicit SysInfo(Machine& machine);

    std::string_view value(std::string_view key) const;

  private:
    std::string text_;
};
