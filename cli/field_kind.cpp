#include "cli/field_kind.h"

#include <algorithm>
#include <iterator>

namespace {

using Names = std::wstring_view;

constexpr Names kUnits[] = {L"Bits",        L"Bytes",        L"Count",      L"Cycles",     L"Hertz",
                            L"Hours",       L"Hz",           L"MTs",        L"Mbps",       L"Milliamps",
                            L"Millimetres", L"Milliseconds", L"Millivolts", L"Milliwatts", L"Minutes",
                            L"Percent",     L"Rpm",          L"Seconds"};

constexpr Names kNumbers[] = {
    // order and place
    L"Index", L"SocketId", L"DieId", L"ClusterId", L"CoreId", L"DrawerId", L"BookId", L"ThreadIndex",
    L"NumaNode", L"InterfaceIndex", L"PortNumber", L"VlanId", L"Number", L"BusNumber", L"DeviceNumber",
    L"NamespaceId", L"Irq", L"Dma", L"PartitionId", L"PoolId", L"UserId", L"GroupId", L"MainPid",
    L"ModelNumber",
    // processors and memory
    L"Cores", L"Threads", L"OnlineThreads", L"CoresEnabled", L"PerformanceCores", L"EfficiencyCores",
    L"ThreadsPerCore", L"BogoMips", L"SlotsTotal", L"SlotsUsed", L"HugePagesTotal", L"Rank", L"VirtualCpus",
    L"ActiveProcessors", L"PotentialProcessors", L"MinimumProcessors", L"DesiredProcessors",
    L"SystemActiveProcessors", L"SystemPotentialProcessors", L"PoolProcessors", L"DedicatedProcessors",
    L"SharedProcessors", L"ReservedProcessors", L"CpcProcessors", L"PoolCapacity", L"EntitledCapacity",
    L"MinimumEntitledCapacity", L"MaximumEntitledCapacity", L"CapacityWeight", L"Smt", L"Adjustment",
    // storage and network
    L"Inodes", L"InodesFree", L"RaidDevices", L"Mtu", L"PrefixLength", L"SriovVirtualFunctions",
    // devices
    L"Buttons", L"FunctionKeys", L"HeightUnits", L"PowerCords", L"ContainedElements", L"TypeCode",
    L"BitsPerColor", L"ManufactureYear", L"ManufactureWeek", L"ModelYear", L"MaxBaud", L"LinkWidth",
    L"MaxLinkWidth", L"Structures", L"MappedStart", L"MappedEnd",
    // the system and its load
    L"KernelTaint", L"KernelModulesLoaded", L"InstalledLocales", L"PasswordMaxDays", L"ClockTicksPerSecond",
    L"CpusConfigured", L"CpusOnline", L"MaxOpenFiles", L"OpenFiles", L"MaxOpenFilesPerProcess",
    L"MaxProcesses", L"MaxThreads", L"MaxUserWatches", L"SharedMemoryTotalPages", L"SharedMemorySegments",
    L"SemaphoresPerSet", L"SemaphoresTotal", L"SemaphoreOpsPerCall", L"SemaphoreSets", L"MessageQueues",
    L"Swappiness", L"OvercommitMemory", L"OvercommitRatio", L"DirtyRatio", L"HugePages",
    L"AddressSpaceRandomization", L"CoreUsesPid", L"IPv4Forwarding", L"IPv6Forwarding", L"SoftNoFile",
    L"HardNoFile", L"SoftNProc", L"HardNProc", L"Entropy", L"Load1", L"Load5", L"Load15", L"RunnableTasks",
    L"TotalTasks", L"ContextSwitches", L"Interrupts", L"ProcessesCreated", L"ProcessesRunning",
    L"ProcessesBlocked", L"CpuPressureAvg10", L"MemoryPressureAvg10", L"IoPressureAvg10", L"PowerVmPurr",
    L"EntitledUse",
    // the scan
    L"FieldTableVersion", L"InstancesTotal", L"SourcesDenied", L"SourcesMissing", L"ItemsMalformed"};

constexpr Names kFlags[] = {
    // devices
    L"AcOnline", L"BatteryPresent", L"BootDisplay", L"BootVga", L"Bridge", L"BuiltIn", L"Carrier",
    L"ChecksumValid", L"Console", L"Ecc", L"Enabled", L"HasLeds", L"HasNumericPad", L"HasWheel", L"Is64Bit",
    L"Lock", L"Multipath", L"Online", L"Physical", L"Populated", L"Portable", L"Removable", L"Virtual",
    // volumes, addresses, printers
    L"Bootable", L"Encrypted", L"ReadOnly", L"Swap", L"System", L"DadFailed", L"Deprecated", L"Dynamic",
    L"Permanent", L"Primary", L"Secondary", L"Temporary", L"Tentative", L"AcceptingJobs", L"Color",
    L"Default", L"Shared",
    // software and users
    L"Automatic", L"Essential", L"Held", L"Transition", L"LockEnabled", L"LoginAllowed", L"Privileged",
    L"StillLoggedIn",
    // the system
    L"Autostart", L"Capped", L"DaylightSaving", L"Paravirtualized", L"RebootRequired", L"SecureBoot",
    L"SetupMode", L"SharedProcessorMode"};

constexpr Names kLists[] = {
    // processors, memory, storage
    L"ErrorCorrection", L"SwapDevices", L"TypeDetail", L"Disks", L"MountPoints", L"Options", L"Parents",
    // network
    L"DnsSearch", L"DnsServers", L"Gateway", L"MacAddresses", L"Members", L"NetworkInterface",
    // devices
    L"ConnectedOutputs", L"Drivers", L"InterfaceClasses", L"Modes", L"Outputs", L"Ports", L"SoundDevices",
    L"VirtualFunctions", L"Watchdog",
    // the firmware
    L"AcpiTables", L"BiosLanguages", L"OemStrings", L"OnboardDevices", L"PortConnectors", L"Slots",
    L"StructureTypes", L"SystemConfigOptions",
    // the system and the scan
    L"Evidence", L"Groups", L"SecurityModules", L"ToolsInstalled", L"DeniedSources", L"MalformedItems"};

constexpr Names kPairLists[] = {L"GroupStatus", L"LocaleSettings", L"SecuritySettings", L"Vulnerabilities"};

// Names that are used for values of different kinds.
struct GroupField {
    Names group;
    Names name;
    FieldKind kind;
};
constexpr GroupField kInGroups[] = {
    {L"Processor", L"Family", FieldKind::Number},
    {L"PhysicalProcessor", L"Family", FieldKind::Number},
    {L"Memory", L"NumaNodes", FieldKind::Number},
    {L"PCSystemParams", L"NumaNodes", FieldKind::Number},
    {L"PhysicalProcessor", L"NumaNodes", FieldKind::NumberList},
    {L"PhysicalProcessor", L"Flags", FieldKind::Words},
    {L"Printer", L"Duplex", FieldKind::Flag},
    {L"SMBIOS", L"PowerSupplies", FieldKind::List},
    {L"SystemEnclosure", L"PowerSupplies", FieldKind::Number},
};

template <std::size_t Size>
bool contains(const Names (&names)[Size], std::wstring_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool endsWith(std::wstring_view name, std::wstring_view end) {
    return name.size() >= end.size() && name.substr(name.size() - end.size()) == end;
}

bool isDigit(wchar_t character) {
    return L'0' <= character && character <= L'9';
}

// Takes the digits at the front of `value` away and gives how many there were.
std::size_t takeDigits(std::wstring_view& value) {
    const auto end = std::find_if_not(value.begin(), value.end(), isDigit);
    const auto count = static_cast<std::size_t>(end - value.begin());
    value.remove_prefix(count);
    return count;
}

}  // namespace

FieldKind fieldKind(std::wstring_view group, std::wstring_view name) {
    for (const GroupField& field : kInGroups) {
        if (field.group == group && field.name == name) return field.kind;
    }
    if (contains(kFlags, name)) return FieldKind::Flag;
    if (contains(kLists, name)) return FieldKind::List;
    if (contains(kPairLists, name)) return FieldKind::PairList;
    const auto endsName = [&](Names unit) { return endsWith(name, unit); };
    if (contains(kNumbers, name) || std::any_of(std::begin(kUnits), std::end(kUnits), endsName)) {
        return FieldKind::Number;
    }
    return FieldKind::Text;
}

bool isNumber(std::wstring_view value) {
    if (!value.empty() && value.front() == L'-') value.remove_prefix(1);
    const bool zero = !value.empty() && value.front() == L'0';
    const std::size_t whole = takeDigits(value);
    if (whole == 0 || (zero && whole > 1)) return false;
    if (value.empty()) return true;
    if (value.front() != L'.') return false;
    value.remove_prefix(1);
    return takeDigits(value) > 0 && value.empty();
}

std::vector<std::wstring_view> listItems(FieldKind kind, std::wstring_view value) {
    const std::wstring_view separator = kind == FieldKind::Words ? L" " : L"; ";
    std::vector<std::wstring_view> items;
    std::size_t start = 0;
    for (std::size_t end = 0; end < value.size();) {
        end = std::min(value.find(separator, end), value.size());
        const std::size_t next = std::min(end + separator.size(), value.size());
        // What names nothing goes on with the value before it.
        const std::wstring_view following = value.substr(next, value.find(separator, next) - next);
        const bool goesOn = kind == FieldKind::PairList && next < value.size() &&
                            following.find(L'=') == std::wstring_view::npos;
        if (!goesOn) {
            items.push_back(value.substr(start, end - start));
            start = next;
        }
        end = next;
    }
    return items;
}
