// What does it cost to read a hardware scanner's output, from the file to the filled result store?
#include <stdexcept>

#include "bench/support/reading_bench.h"
#include "bench/support/scanner_files.h"
#include "frame/xml_parser.h"
#include "hw/context.h"
#include "hw/output_parser.h"
#include "hw/query.h"

namespace {
struct ReleaseContext {
    void operator()(ZUKHwCtx* ctx) const {
        HW_cleanFields(ctx->fields);
        delete ctx;
    }
};

std::shared_ptr<void> readHardware(const std::string& path) {
    std::shared_ptr<ZUKHwCtx> ctx(new ZUKHwCtx(), ReleaseContext());
    HW_clearResults(ctx.get());
    XMLParser parser(nullptr, std::wstring(path.begin(), path.end()).c_str());
    if (parser.errors != 0 || HW_parseHWData(ctx.get(), parser.getRootNode()) != 0) {
        throw std::runtime_error("the hardware output was not read");
    }
    return ctx;
}
}  // namespace

int main(int argc, char** argv) {
    return runReadingBench(argc, argv, {{"hardware", writeHardwareFile, readHardware}});
}
