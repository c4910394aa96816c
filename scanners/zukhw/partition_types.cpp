#include "scanners/zukhw/partition_types.h"

#include <algorithm>
#include <iterator>

namespace {

struct Row {
    std::string_view type;
    std::string_view name;
};

constexpr Row kTypes[] = {
    {"01", "FAT12"},
    {"04", "FAT16 (small)"},
    {"05", "Extended"},
    {"06", "FAT16"},
    {"07", "NTFS or exFAT"},
    {"0b", "FAT32"},
    {"0c", "FAT32 (LBA)"},
    {"0e", "FAT16 (LBA)"},
    {"0f", "Extended (LBA)"},
    {"11", "Hidden FAT12"},
    {"12", "Diagnostics"},
    {"14", "Hidden FAT16 (small)"},
    {"16", "Hidden FAT16"},
    {"17", "Hidden NTFS"},
    {"1b", "Hidden FAT32"},
    {"1c", "Hidden FAT32 (LBA)"},
    {"1e", "Hidden FAT16 (LBA)"},
    {"27", "Windows recovery"},
    {"41", "PowerPC PReP boot"},
    {"42", "Windows dynamic disk"},
    {"82", "Linux swap"},
    {"83", "Linux"},
    {"84", "Hibernation"},
    {"85", "Linux extended"},
    {"8e", "Linux LVM"},
    {"a5", "FreeBSD"},
    {"a6", "OpenBSD"},
    {"a8", "Darwin UFS"},
    {"a9", "NetBSD"},
    {"ab", "Darwin boot"},
    {"af", "HFS+"},
    {"be", "Solaris boot"},
    {"bf", "Solaris"},
    {"da", "Non-file-system data"},
    {"de", "Vendor utility"},
    {"ea", "Linux extended boot"},
    {"ee", "GPT protective"},
    {"ef", "EFI system"},
    {"fb", "VMware VMFS"},
    {"fc", "VMware swap"},
    {"fd", "Linux RAID"},
    // UEFI
    {"024dee41-33e7-11d3-9d69-0008c781f39f", "MBR partition scheme"},
    {"c12a7328-f81f-11d2-ba4b-00a0c93ec93b", "EFI system"},
    {"21686148-6449-6e6f-744e-656564454649", "BIOS boot"},
    // Windows
    {"e3c9e316-0b5c-4db8-817d-f92df00215ae", "Microsoft reserved"},
    {"ebd0a0a2-b9e5-4433-87c0-68b6b72699c7", "Microsoft basic data"},
    {"5808c8aa-7e8f-42e0-85d2-e1e90434cfb3", "Microsoft LDM metadata"},
    {"af9b60a0-1431-4f62-bc68-3311714a69ad", "Microsoft LDM data"},
    {"de94bba4-06d1-4d40-a16a-bfd50179d6ac", "Windows recovery"},
    {"e75caf8f-f680-4cee-afa3-b001e56efc2d", "Microsoft Storage Spaces"},
    // Linux
    {"0fc63daf-8483-4772-8e79-3d69d8477de4", "Linux"},
    {"a19d880f-05fc-4d3b-a006-743f0f84911e", "Linux RAID"},
    {"0657fd6d-a4ab-43c4-84e5-0933c84b4f4f", "Linux swap"},
    {"e6d6d379-f507-44c2-a23c-238f2a3df928", "Linux LVM"},
    {"8da63339-0007-60c0-c436-083ac8230908", "Linux reserved"},
    {"7ffec5c9-2d00-49b7-8941-3ea10a5586b7", "dm-crypt"},
    {"ca7d7ccb-63ed-4c53-861c-1742536059cc", "LUKS"},
    {"bc13c2ff-59e6-4262-a352-b275fd6f7172", "Linux extended boot"},
    {"933ac7e1-2eb4-4f13-b844-0e14e2aef915", "Linux home"},
    {"3b8f8425-20e0-4f3b-907f-1a25a76f98e8", "Linux server data"},
    {"4d21b016-b534-45c2-a9fb-5c16e091fd2d", "Linux variable data"},
    {"7ec6f557-3bc5-4aca-b293-16ef5df639d1", "Linux temporary data"},
    {"773f91ef-66d4-49b5-bd83-d683bf40ad16", "Linux user's home"},
    {"44479540-f297-41b2-9af7-d131d5f0458a", "Linux root (x86)"},
    {"4f68bce3-e8cd-4db1-96e7-fbcaf984b709", "Linux root (x86-64)"},
    {"69dad710-2ce4-4e3c-b16c-21a1d49abed3", "Linux root (ARM)"},
    {"b921b045-1df0-41c3-af44-4c6f280d3fae", "Linux root (ARM64)"},
    {"993d8d3d-f80e-4225-855a-9daf8ed7ea97", "Linux root (IA-64)"},
    {"77055800-792c-4f94-b39a-98c91b762bb6", "Linux root (LoongArch64)"},
    {"1de3f1ef-fa98-47b5-8dcd-4a860a654d78", "Linux root (PowerPC)"},
    {"912ade1d-a839-4913-8964-a10eee08fbd2", "Linux root (PowerPC64)"},
    {"c31c45e6-3f39-412e-80fb-4809c4980599", "Linux root (PowerPC64 little-endian)"},
    {"60d5a7fe-8e7d-435c-b714-3dd8162144e1", "Linux root (RISC-V 32)"},
    {"72ec70a6-cf74-40e6-bd49-4bda08e8f224", "Linux root (RISC-V 64)"},
    {"5eead9a9-fe09-4a1e-a1d7-520d00531306", "Linux root (s390x)"},
    {"8484680c-9521-48c6-9c11-b0720656f69e", "Linux /usr (x86-64)"},
    {"b0e01050-ee5f-4390-949a-9101b17104e9", "Linux /usr (ARM64)"},
    // others
    {"48465300-0000-11aa-aa11-00306543ecac", "Apple HFS+"},
    {"7c3457ef-0000-11aa-aa11-00306543ecac", "Apple APFS"},
    {"426f6f74-0000-11aa-aa11-00306543ecac", "Apple boot"},
    {"83bd6b9d-7f41-11dc-be0b-001560b84f0f", "FreeBSD boot"},
    {"516e7cb4-6ecf-11d6-8ff8-00022d09712b", "FreeBSD"},
    {"516e7cb5-6ecf-11d6-8ff8-00022d09712b", "FreeBSD swap"},
    {"516e7cb6-6ecf-11d6-8ff8-00022d09712b", "FreeBSD UFS"},
    {"516e7cba-6ecf-11d6-8ff8-00022d09712b", "FreeBSD ZFS"},
    {"6a82cb45-1dd2-11b2-99a6-080020736631", "Solaris boot"},
    {"6a898cc3-1dd2-11b2-99a6-080020736631", "ZFS or macOS /usr"},
    {"9e1a2d38-c612-4316-aa26-8b49521e5a8b", "PowerPC PReP boot"},
    {"aa31e02a-400f-11db-9590-000c2911d1b8", "VMware VMFS"},
    {"fe3a2a5d-4f32-41a7-b725-accc3285a309", "ChromeOS kernel"},
    {"3cb8e202-3b7e-47dd-8a3c-7ff2a13cfcec", "ChromeOS root"},
};

}  // namespace

std::string_view partitionTypeName(std::string_view type) {
    const auto* found =
        std::find_if(std::begin(kTypes), std::end(kTypes), [&](const Row& row) { return row.type == type; });
    return found == std::end(kTypes) ? std::string_view() : found->name;
}
