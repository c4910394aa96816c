#include "frame/context.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "frame/location.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"

namespace {

constexpr char kBuild[] = "21/11/26zuk_1.0.0.0";
constexpr int kLogLevel = 1;

enum Status { kOk = 0, kNoExploiter = 2, kNoContext = 3, kNoLogger = 4, kNoRecord = 5 };

}  // namespace

int ZUK_init(const char* exploiter, ZUK_log_callback log_callback, void* user_data, const wchar_t* temp_base,
             const wchar_t* home_dir, ZUKCtx** out) {
    if (exploiter == nullptr) return kNoExploiter;
    ZUKCtx* ctx = new (std::nothrow) ZUKCtx;
    if (ctx == nullptr) return kNoRecord;

    ctx->exploiter = strdup(exploiter);
    ctx->log = new (std::nothrow) ZUKlog(kLogLevel, log_callback, user_data);
    if (ctx->log == nullptr) {
        std::free(ctx->exploiter);
        delete ctx;
        return kNoLogger;
    }
    traceMAX(ctx->log, "ZUK_init", "init OK, Exploiter: [%s] Version: [%s] ZUK DIR[%S]", exploiter, kBuild,
             home_dir != nullptr ? home_dir : L"(null)");

    ctx->tmpDir = new TemporaryDir(ctx->log, temp_base);
    const int status = ctx->tmpDir->init(L"zuk_");

    ZUKlocation location(ctx->log, exploiter, home_dir);
    ctx->homeDir = location.getLocation();
    if (location.getLocation().empty()) {
        traceMIN(ctx->log, "ZUK_init", "ZUK not installed, please specify a directory");
    }

    if (status != kOk) {
        // Only the record's own storage goes back. The logger and the directory object are deliberately
        // kept, so nothing that the callback was told about disappears under it.
        ::operator delete(ctx);
        return status;
    }
    *out = ctx;
    return kOk;
}

int ZUK_free(ZUKCtx* ctx) {
    if (ctx == nullptr) return kNoContext;
    int status = kNoExploiter;
    traceMAX(ctx->log, "ZUK_free", "Deinit for exploiter: [%s]",
             ctx->exploiter != nullptr ? ctx->exploiter : "(null)");

    if (ctx->exploiter != nullptr) {
        std::free(ctx->exploiter);
        ctx->exploiter = nullptr;
        status = kOk;
        if (ctx->tmpDir != nullptr) {
            status = ctx->tmpDir->deleteFiles(true);
            delete ctx->tmpDir;  // still logs, so the logger goes last
            ctx->tmpDir = nullptr;
        }
    }
    delete ctx->log;
    ctx->log = nullptr;

    if (status != kOk) return status;  // the record is kept
    delete ctx;
    return kOk;
}
