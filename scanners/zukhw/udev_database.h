#pragma once

#include <map>
#include <string>
#include <string_view>

class Machine;

// What udev has found out about devices; machine.shared<UdevDatabase>(). Optional: containers and small
// systems have none.
class UdevDatabase {
  public:
    using Properties = std::map<std::string, std::string, std::less<>>;

    explicit UdevDatabase(Machine& machine);

    // The properties of the device with this database name: "b8:0" (block), "c4:64" (character), "n2"
    // (network interface by index), "+pci:0000:00:1f.2". Empty when there are none. Valid as long as this
    // object.
    const Properties& of(const std::string& device);
    // One of them; empty when it is not set.
    std::string_view property(const std::string& device, std::string_view key);

  private:
    Machine& machine_;
    bool present_;
    std::map<std::string, Properties> known_;
};

// Undoes udev's writing of unsafe characters in *_ENC properties and partition names: "\x20" is a space.
std::string decodeUdevEscapes(std::string_view text);
