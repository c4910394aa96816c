// What does it cost to read a software scanner's output, from the files to the results?
#include <stdexcept>

#include "bench/support/reading_bench.h"
#include "bench/support/scanner_files.h"
#include "bench/support/scratch_file.h"
#include "sw/context.h"
#include "sw/output_parser.h"

namespace {
struct ReleaseContext {
    void operator()(ZUKSwCtx* ctx) const {
        SW_deleteResults(ctx);
        delete ctx;
    }
};

std::shared_ptr<void> readSoftware(const std::string& path) {
    std::shared_ptr<ZUKSwCtx> ctx(new ZUKSwCtx(), ReleaseContext());
    ctx->log = nullptr;
    ctx->warningArray = nullptr;
    ctx->resultArray = nullptr;
    const ScratchFile warnings;
    writeWarningFile(warnings.path());
    const std::string& warningPath = warnings.path();
    if (SW_ParseOutput(ctx.get(), std::wstring(path.begin(), path.end()),
                       std::wstring(warningPath.begin(), warningPath.end())) != 0) {
        throw std::runtime_error("the software output was not read");
    }
    return ctx;
}
}  // namespace

int main(int argc, char** argv) {
    return runReadingBench(argc, argv, {{"software", writeSoftwareFile, readSoftware}});
}
