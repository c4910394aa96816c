#include "sw/config_file.h"
#include "sw/context.h"
#include "sw/output_parser.h"
#include "sw/scanner.h"
#include "sw/signature_file.h"

namespace {

enum Status { kOk = 0, kNoContext = 3, kNotWritten = 201, kNullSignature = 202 };

// The last steps of every evaluation: both files are there, or named by the caller.
int scan(ZUKSwCtx* ctx, const std::wstring& configPath, const std::wstring& signaturePath) {
    std::wstring warningPath;
    std::wstring outputPath;
    const int status = SW_ExecuteScanner(ctx, configPath, signaturePath, warningPath, outputPath);
    return status != kOk ? status : SW_ParseOutput(ctx, outputPath, warningPath);
}

}  // namespace

int ZUK_sw_evaluate(ZUKSwCtx* ctx, const wchar_t* signature) {
    if (ctx == nullptr) return kNoContext;
    if (signature == nullptr) return kNullSignature;
    SW_deleteResults(ctx);
    std::wstring configPath;
    std::wstring signaturePath;
    if (SW_CreateConfigFile(ctx, configPath) != kOk) return kNotWritten;
    if (SW_CreateSignature(ctx, signaturePath, signature) != kOk) return kNotWritten;
    return scan(ctx, configPath, signaturePath);
}

int ZUK_sw_evaluate_file(ZUKSwCtx* ctx, const wchar_t* path) {
    if (ctx == nullptr) return kNoContext;
    if (path == nullptr) return kNullSignature;
    SW_deleteResults(ctx);
    std::wstring configPath;
    if (SW_CreateConfigFile(ctx, configPath) != kOk) return kNotWritten;
    return scan(ctx, configPath, path);
}

// Unlike the other two it hands on the writers' own statuses.
int ZUK_sw_evaluate_multi(ZUKSwCtx* ctx, const wchar_t** signatures, unsigned count) {
    if (ctx == nullptr) return kNoContext;
    if (signatures == nullptr) return kNullSignature;
    SW_deleteResults(ctx);
    std::wstring configPath;
    if (const int status = SW_CreateConfigFile(ctx, configPath); status != kOk) return status;
    std::wstring signaturePath;
    if (const int status = SW_CreateSignatures(ctx, signaturePath, signatures, count); status != kOk)
        return status;
    return scan(ctx, configPath, signaturePath);
}
