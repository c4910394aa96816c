#include "sw/scanner.h"

#include "frame/scanner_run.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"
#include "sw/context.h"

namespace {

constexpr char kHere[] = "SW_ExecuteScanner()";
constexpr int kSignatureRejected = 3;  // the scanner's exit status for it

enum Status { kOk = 0, kNoContext = 3, kRejected = 202, kScannerFailed = 203 };

}  // namespace

int SW_ExecuteScanner(ZUKSwCtx* ctx, std::wstring configPath, std::wstring signaturePath,
                      std::wstring& warningPath, std::wstring& outputPath) {
    if (ctx == nullptr) return kNoContext;
    if (const int status = ctx->tmpDir->getTmpFile(outputPath, L"out_", L".xml"); status != kOk) {
        traceMIN(ctx->log, kHere, "Can't create output file");
        return status;
    }
    traceMAX(ctx->log, kHere, "Output File: %S", outputPath.c_str());
    if (const int status = ctx->tmpDir->getTmpFile(warningPath, L"warning_", L".xml"); status != kOk) {
        traceMIN(ctx->log, kHere, "Can't create warning file");
        return status;
    }
    traceMAX(ctx->log, kHere, "Warning file: %S", warningPath.c_str());

    const std::wstring command = ctx->homeDir + ctx->tmpDir->getDirectorySeparator() + L"zuksw -c \"" +
                                 configPath + L"\" -o \"" + outputPath + L"\" -e \"" + warningPath +
                                 L"\" -i \"" + signaturePath + L"\"";
    traceMAX(ctx->log, kHere, "Executing command: [%S]", command.c_str());
    switch (runScanner(command, ctx->homeDir, ctx->log, kHere, ctx->lastRc)) {
        case 0:
            return kOk;
        case kSignatureRejected:
            return kRejected;
        default:
            return kScannerFailed;
    }
}
