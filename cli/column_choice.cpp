#include "cli/column_choice.h"

#include <algorithm>
#include <string_view>

#include "cli/text.h"

namespace {

// For groups of many instances, what tells these apart and is asked for most, in this order.
struct Preference {
    std::wstring_view group;
    std::wstring_view fields;
};

constexpr Preference kPreferences[] = {
    {L"Processor", L"Index Online SocketId CoreId ThreadIndex CoreType NumaNode Model MaxMHz"},
    {L"PhysicalProcessor", L"SocketId SocketDesignation Populated Model Cores Threads MaxMHz"},
    {L"MemoryModules", L"Locator SizeBytes Type Manufacturer PartNumber SerialNumber ConfiguredSpeedMTs"},
    {L"Storage", L"DeviceName Kind SizeBytes Model MediaType Interface SerialNumber"},
    {L"DiskPartition", L"DeviceName SizeBytes TypeName FileSystem Label MountPoint"},
    {L"Partition", L"DeviceName Kind SizeBytes FileSystem MountPoints Name Label"},
    {L"LogicalDrive", L"MountPoint Device FileSystem SizeBytes AvailableBytes Kind"},
    {L"NetworkAdapter", L"InterfaceName Kind OperState MacAddress SpeedMbps Driver Model"},
    {L"IPAddress", L"InterfaceName Address PrefixLength Scope Gateway Dynamic"},
    {L"IPv6Address", L"InterfaceName Address PrefixLength Scope Gateway"},
    {L"Video", L"BusAddress Vendor Model Driver MemoryBytes"},
    {L"Monitor", L"Connector Manufacturer Model SerialNumber PreferredResolution"},
    {L"Keyboard", L"Name Bus Layout Vendor"},
    {L"PointingDevice", L"Name Kind Bus Vendor"},
    {L"Printer", L"Name Connection State Default Model DeviceUri"},
    {L"SystemEnclosure", L"Type Manufacturer Version SerialNumber AssetTag"},
    {L"SerialPort", L"DeviceName Kind Chip IoPort Irq BusAddress Model"},
    {L"PCIDevice", L"Address Vendor Device Driver SubclassName VendorId DeviceId ClassCode"},
    {L"USBDevice", L"PortPath Kind Vendor Product Drivers VendorId ProductId"},
    {L"Modem", L"Name Kind Ports NetworkInterface Driver"},
    {L"SoftwarePackages", L"Name Version Architecture Summary InstallDate Manager"},
    {L"InstalledPatches", L"Name FromVersion ToVersion InstallDate Kind"},
    {L"ServiceInfo", L"Name StartMode State SubState Description"},
    {L"UserAccountInfo", L"Name UserId GroupName Shell Home FullName PasswordState"},
    {L"ScreenSaverInfo", L"UserName Program Enabled TimeoutSeconds LockEnabled"},
    {L"CpuMeter", L"Cpu BusyPercent UserMilliseconds SystemMilliseconds IdleMilliseconds"},
    {L"VirtualMachine", L"Kind Hypervisor Role CloudProvider Evidence"},
    {L"VirtualMachineGuest", L"Name Kind Hypervisor State MemoryBytes VirtualCpus"},
};

// The columns that it needs to be of use: a long text may be cut, a number and a title may not.
std::size_t leastWidth(const Column& column, const Page& page) {
    constexpr std::size_t kReadable = 17;  // a MAC address
    const std::size_t whole = widthOf(column);
    return column.alignRight
               ? whole
               : std::min(whole, std::max(columns(column.title), std::min(kReadable, page.width / 4)));
}

// The place of a field among the preferred ones; behind them all when it is none.
std::size_t rankOf(const std::vector<std::wstring_view>& preferred, std::wstring_view field) {
    return static_cast<std::size_t>(std::find(preferred.begin(), preferred.end(), field) - preferred.begin());
}

}  // namespace

std::vector<std::wstring_view> preferredColumns(std::wstring_view group) {
    std::vector<std::wstring_view> fields;
    for (const Preference& preference : kPreferences) {
        if (preference.group != group) continue;
        for (std::wstring_view rest = preference.fields; !rest.empty();) {
            const std::size_t end = std::min(rest.find(L' '), rest.size());
            fields.push_back(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    return fields;
}

ColumnChoice chooseColumns(const std::wstring& group, std::vector<Column> columns, const Page& page) {
    const std::vector<std::wstring_view> preferred = preferredColumns(group);
    std::stable_sort(columns.begin(), columns.end(), [&](const Column& one, const Column& other) {
        return rankOf(preferred, one.title) < rankOf(preferred, other.title);
    });
    ColumnChoice choice;
    std::size_t least = 0;
    std::size_t whole = 0;
    for (Column& column : columns) {
        const bool isPreferred = rankOf(preferred, column.title) < preferred.size();
        const bool hasRoom = isPreferred ? least + kColumnGap + leastWidth(column, page) <= page.width
                                         : whole + kColumnGap + widthOf(column) <= page.width;
        if (!hasRoom && !choice.shown.empty()) {
            choice.left.push_back(column.title);
            continue;
        }
        least += kColumnGap + leastWidth(column, page);
        whole += kColumnGap + widthOf(column);
        choice.shown.push_back(std::move(column));
    }
    return choice;
}
