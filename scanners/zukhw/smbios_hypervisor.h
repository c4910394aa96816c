#pragma once

#include <string_view>

class Smbios;

// The hypervisor whose virtual machines have firmware like this: "VMware", "QEMU"; empty for any other.
std::string_view smbiosHypervisor(const Smbios& smbios);

// Whether the firmware says that this is a virtual machine, whoever's.
bool isVirtualBySmbios(const Smbios& smbios);

// The cloud that this machine belongs to: "Amazon EC2", "Microsoft Azure"; empty when it is none of the
// known.
std::string_view smbiosCloudProvider(const Smbios& smbios);
