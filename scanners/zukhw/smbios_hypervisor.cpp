#include "scanners/zukhw/smbios_hypervisor.h"

#include <algorithm>
#include <string>

#include "scanners/zukhw/smbios.h"
#include "scanners/zukhw/text.h"

namespace {

enum class Where { Bios, SystemVendor, Product, Board, ChassisTag };

std::string stringAt(const Smbios& smbios, Where where) {
    switch (where) {
        case Where::Bios:
            return smbios.string(0, 0x04);
        case Where::SystemVendor:
            return smbios.string(1, 0x04);
        case Where::Product:
            return smbios.string(1, 0x05);
        case Where::Board:
            return smbios.string(2, 0x04);
        case Where::ChassisTag:
            break;
    }
    return smbios.string(3, 0x08);
}

// A text at the head of a string names its maker.
struct Mark {
    Where where;
    std::string_view head;
    std::string_view name;
};

constexpr Mark kHypervisors[] = {
    {Where::Product, "VMware", "VMware"},
    {Where::SystemVendor, "VMware", "VMware"},
    {Where::SystemVendor, "VMW", "VMware"},
    {Where::SystemVendor, "innotek GmbH", "VirtualBox"},
    {Where::Product, "VirtualBox", "VirtualBox"},
    {Where::Product, "HVM domU", "Xen"},
    {Where::SystemVendor, "Xen", "Xen"},
    {Where::Bios, "Xen", "Xen"},
    {Where::Product, "Parallels", "Parallels"},
    {Where::SystemVendor, "Parallels", "Parallels"},
    {Where::Product, "BHYVE", "bhyve"},
    {Where::Bios, "BHYVE", "bhyve"},
    {Where::Product, "Apple Virtualization", "Apple Virtualization"},
    {Where::Product, "KVM", "KVM"},
    {Where::Product, "RHEV Hypervisor", "KVM"},
    {Where::Product, "oVirt", "KVM"},
    {Where::SystemVendor, "KubeVirt", "KVM"},
    {Where::Product, "AHV", "KVM"},  // Nutanix; their own machines have other names
    {Where::Product, "OpenStack", "KVM"},
    {Where::SystemVendor, "OpenStack", "KVM"},
    {Where::SystemVendor, "QEMU", "QEMU"},
    {Where::Product, "QEMU", "QEMU"},
    {Where::Board, "QEMU", "QEMU"},
    {Where::SystemVendor, "Bochs", "Bochs"},
    {Where::Bios, "Bochs", "Bochs"},
};

constexpr Mark kClouds[] = {
    {Where::SystemVendor, "Amazon EC2", "Amazon EC2"},
    {Where::Bios, "Amazon EC2", "Amazon EC2"},
    {Where::ChassisTag, "Amazon EC2", "Amazon EC2"},
    {Where::ChassisTag, "7783-7084-3265-9085-8269-3286-77", "Microsoft Azure"},
    {Where::Product, "Google Compute Engine", "Google Cloud"},
    {Where::ChassisTag, "OracleCloud.com", "Oracle Cloud"},
    {Where::ChassisTag, "ibmcloud", "IBM Cloud"},
    {Where::SystemVendor, "Alibaba Cloud", "Alibaba Cloud"},
    {Where::SystemVendor, "Tencent Cloud", "Tencent Cloud"},
    {Where::ChassisTag, "HUAWEICLOUD", "Huawei Cloud"},
    {Where::SystemVendor, "DigitalOcean", "DigitalOcean"},
    {Where::SystemVendor, "Hetzner", "Hetzner"},
    {Where::SystemVendor, "Scaleway", "Scaleway"},
    {Where::SystemVendor, "Vultr", "Vultr"},
    {Where::SystemVendor, "UpCloud", "UpCloud"},
    {Where::SystemVendor, "Akamai", "Akamai"},
    {Where::SystemVendor, "Linode", "Akamai"},
    {Where::SystemVendor, "Exoscale", "Exoscale"},
    {Where::Product, "OpenStack", "OpenStack"},
    {Where::SystemVendor, "OpenStack", "OpenStack"},
};

template <std::size_t Size>
std::string_view firstMark(const Smbios& smbios, const Mark (&marks)[Size]) {
    const auto fits = [&](const Mark& mark) {
        return startsWith(trim(stringAt(smbios, mark.where)), mark.head);
    };
    const auto found = std::find_if(std::begin(marks), std::end(marks), fits);
    return found == std::end(marks) ? std::string_view() : found->name;
}

bool isHyperV(const Smbios& smbios) {
    // The maker also makes computers.
    return startsWith(stringAt(smbios, Where::SystemVendor), "Microsoft Corporation") &&
           trim(stringAt(smbios, Where::Product)) == "Virtual Machine";
}

}  // namespace

std::string_view smbiosHypervisor(const Smbios& smbios) {
    return isHyperV(smbios) ? "Hyper-V" : firstMark(smbios, kHypervisors);
}

bool isVirtualBySmbios(const Smbios& smbios) {
    constexpr unsigned kVirtualMachine = 1U << 4;
    const SmbiosStructure* firmware = smbios.first(0);
    return firmware != nullptr && (firmware->byte(0x13).value_or(0) & kVirtualMachine) != 0;
}

std::string_view smbiosCloudProvider(const Smbios& smbios) {
    if (endsWith(trim(smbios.string(0, 0x05)), ".amazon"))
        return "Amazon EC2";  // their older machines, on Xen
    return firstMark(smbios, kClouds);
}
