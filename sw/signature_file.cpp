#include "sw/signature_file.h"

#include "frame/file.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"
#include "sw/config_file.h"
#include "sw/context.h"

namespace {

enum Status { kNoContext = 3, kNotWritten = 202 };

bool writeSignatures(ZUKSwCtx* ctx, FILE* file, const wchar_t** signatures, unsigned count) {
    bool written = SW_writeData(ctx, file, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") &&
                   SW_writeData(ctx, file, "<Signatures>\n");
    for (unsigned i = 0; written && i < count; ++i) written = SW_writeData(ctx, file, signatures[i]);
    return written && SW_writeData(ctx, file, "</Signatures>\n") && flush(file);
}

}  // namespace

int SW_CreateSignatures(ZUKSwCtx* ctx, std::wstring& path, const wchar_t** signatures, unsigned count) {
    constexpr char kHere[] = "SW_CreateSignatures()";
    if (ctx == nullptr) return kNoContext;
    // Without a name the opening fails; should it succeed all the same, this status is the answer.
    const int status = ctx->tmpDir->getTmpFile(path, L"sig_", L".xml");
    traceMAX(ctx->log, kHere, "Creating a signature file [%S]", path.c_str());

    const File file = openForWriting(path);
    if (!file) return kNotWritten;
    if (writeSignatures(ctx, file.get(), signatures, signatures != nullptr ? count : 0)) return status;
    traceMIN(ctx->log, kHere, "Error during write [%S]", path.c_str());
    return kNotWritten;
}

int SW_CreateSignature(ZUKSwCtx* ctx, std::wstring& path, const wchar_t* signature) {
    return SW_CreateSignatures(ctx, path, &signature, 1);
}
