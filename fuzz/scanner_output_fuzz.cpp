// Whatever a scanner leaves is turned into results, or refused, without harm.
#include "frame/xml_parser.h"
#include "fuzz/support/memory_file.h"
#include "hw/context.h"
#include "hw/output_parser.h"
#include "hw/query.h"
#include "sw/context.h"
#include "sw/output_parser.h"

namespace {
void readAsHardware(const MemoryFile& file) {
    ZUKHwCtx ctx{};
    HW_clearResults(&ctx);
    XMLParser parser(nullptr, file.widePath().c_str());
    if (parser.errors == 0) HW_parseHWData(&ctx, parser.getRootNode());
    HW_cleanFields(ctx.fields);
}

// As the output and as the warnings of one scan.
void readAsSoftware(const MemoryFile& file) {
    ZUKSwCtx ctx;
    SW_ParseOutput(&ctx, file.widePath(), file.widePath());
    SW_deleteResults(&ctx);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(data, size);
    readAsHardware(file);
    readAsSoftware(file);
    return 0;
}
