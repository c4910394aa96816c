// Any file is searched as the hardware database without harm, and in the time that a search may take.
#include <cstdint>
#include <filesystem>

#include "scanners/zukhw/hwdb.h"
#include "scanners/zukhw/machine.h"
#include "tests/support/temporary_folder.h"

namespace {

// A machine that has a hardware database and nothing else.
class DatabaseMachine {
  public:
    DatabaseMachine() { std::filesystem::create_directories(folder_.path() + "/etc/udev"); }

    Machine with(std::string_view database) {
        folder_.file("etc/udev/hwdb.bin", database);
        return Machine(*RootedFs::below(folder_.path()), Deadline(std::chrono::hours(1)));
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static DatabaseMachine folder;
    Machine machine = folder.with({reinterpret_cast<const char*>(data), size});
    Hwdb database(machine);
    for (const char* name :
         {"pci:v00008086d00001237sv00001AF4sd00001100bc06sc00i00", "acpi:DEL:", "usb:v1D6Bp0002"}) {
        database.lookup(name);
    }
    return 0;
}
