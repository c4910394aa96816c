// Any table, under any version, is read without harm by every group that reads it. The first two bytes are
// the version, the rest is the table.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr std::size_t kVersion = 2;

// A machine that has firmware tables and nothing else.
class TableMachine {
  public:
    TableMachine() : tables_(folder_.path() + "/sys/firmware/dmi/tables/") {
        std::filesystem::create_directories(tables_);
    }

    Machine with(const std::string& entryPoint, const std::string& table) {
        folder_.file("sys/firmware/dmi/tables/smbios_entry_point", entryPoint);
        folder_.file("sys/firmware/dmi/tables/DMI", table);
        return Machine(*RootedFs::below(folder_.path()), Deadline(std::chrono::hours(1)));
    }

  private:
    TemporaryFolder folder_;
    std::string tables_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static TableMachine tables;
    if (size < kVersion) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string entryPoint = std::string("_SM3_\0\0", 7) + bytes.substr(0, kVersion);
    Machine machine = tables.with(entryPoint, bytes.substr(kVersion));
    for (const auto collect :
         {collectSMBIOS, collectMemoryModules, collectSystemEnclosure, collectComponentID,
          collectPCSystemParams, collectPhysicalProcessor, collectVirtualMachine, collectMemory,
          collectPointingDevice, collectSerialPort, collectParallelPort}) {
        GroupWriter writer("Fuzz", machine.deadline());
        collect(machine, writer);
        writer.finish();
    }
    return 0;
}
