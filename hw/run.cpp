#include "frame/scanner_run.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"
#include "frame/xml_parser.h"
#include "hw/config_file.h"
#include "hw/context.h"
#include "hw/output_parser.h"

namespace {

constexpr char kHere[] = "ZUK_hw_run";

enum Status { kOk = 0, kNoContext = 3, kScannerFailed = 103, kBadOutput = 104 };

std::wstring scannerCommand(ZUKHwCtx* ctx, const std::wstring& config, const std::wstring& output) {
    return ctx->homeDir + ctx->tmpDir->getDirectorySeparator() + L"zukhw -c \"" + config + L"\" -o \"" +
           output + L"\"";
}

int parseOutput(ZUKHwCtx* ctx, const std::wstring& output) {
    traceMAX(ctx->log, kHere, "Parsing XML file");
    XMLParser parser(ctx->log, output.c_str());
    return parser.errors > 0 ? kBadOutput : HW_parseHWData(ctx, parser.getRootNode());
}

}  // namespace

int ZUK_hw_run(ZUKHwCtx* ctx) {
    if (ctx == nullptr) return kNoContext;

    // A name that could not be had shows in the step that uses it.
    std::wstring config;
    ctx->tmpDir->getTmpFile(config, L"config", L".xml");
    HW_clearResults(ctx);
    traceMAX(ctx->log, kHere, "Generating config file: [%S]", config.c_str());
    ctx->returnCode = -1;
    if (const int status = HW_generateHWConfigFile(ctx, config.c_str()); status != kOk) {
        traceMIN(ctx->log, kHere, "Config file creation error");
        return status;
    }

    std::wstring output;
    ctx->tmpDir->getTmpFile(output, L"out_", L".xml");
    const std::wstring command = scannerCommand(ctx, config, output);
    traceMAX(ctx->log, kHere, "Executing ZUK [%S]", command.c_str());
    if (runScanner(command, ctx->homeDir, ctx->log, kHere, ctx->returnCode) != kOk) return kScannerFailed;
    return parseOutput(ctx, output);
}
