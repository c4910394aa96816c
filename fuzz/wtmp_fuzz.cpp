// A file of logins is read without harm whatever its bytes, and gives no record that is not wholly there.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "scanners/zukhw/login_history.h"
#include "scanners/zukhw/wtmp.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const LoginRecordLayout layout = findLoginRecordLayout(bytes);
    const auto records = parseLoginRecords(bytes, layout);
    if (records.size() != size / layout.size) std::abort();
    const auto logins = findLogins(records);
    if (logins.size() > kMaxLogins || logins.size() > records.size()) std::abort();
    return 0;
}
