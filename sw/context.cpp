#include "sw/context.h"

#include <cstdlib>
#include <new>

#include "frame/context.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"

namespace {

constexpr int kLogLevel = 4;

enum Status { kOk = 0, kNoContext = 3, kNoRecord = 5, kNullOption = 7 };

}  // namespace

ZUKSwCtx::ZUKSwCtx() = default;

void SW_deleteResults(ZUKSwCtx* ctx) {
    if (ctx == nullptr) return;
    for (ZUKSwResult* result : ctx->results) delete result;
    ctx->results.clear();
    std::free(ctx->resultArray);
    ctx->resultArray = nullptr;

    if (!ctx->guidResults.empty()) {
        for (const auto& cached : ctx->guidResults) std::free(cached.second);
        ctx->guidResults.clear();
        ctx->guidResultCounts.clear();
    }
    ctx->lastRc = -1;

    ctx->warnings.clear();
    std::free(ctx->warningArray);
    ctx->warningArray = nullptr;
}

int ZUK_sw_init(ZUKCtx* libCtx, ZUK_log_callback callback, void* user_data, ZUKSwCtx** out) {
    auto* ctx = new (std::nothrow) ZUKSwCtx;
    if (ctx == nullptr) {
        *out = nullptr;
        return kNoRecord;
    }
    ctx->libCtx = libCtx;
    ctx->homeDir = libCtx->homeDir;
    ctx->log = new ZUKlog(kLogLevel, callback, user_data);
    ctx->tmpDir = new TemporaryDir(ctx->log, libCtx->tmpDir->getBasePath());
    if (ctx->tmpDir->init(L"zuksw") != 0) {
        traceMAX(ctx->log, "ZUK_sw_init", "Can't create temporary DIR: %S", ctx->tmpDir->getBasePath());
    }
    *out = ctx;
    return kOk;
}

int ZUK_sw_setopt_config(ZUKSwCtx* ctx, const wchar_t* plugin, const wchar_t* attribute,
                         const wchar_t* value) {
    constexpr char kHere[] = "ZUK_sw_setopt_config";
    if (ctx == nullptr) return kNoContext;
    if (plugin == nullptr || attribute == nullptr || value == nullptr) {
        traceMIN(ctx->log, kHere, "Error: some of the attributes are NULL");
        return kNullOption;
    }
    ctx->pluginConfig[plugin].emplace_back(attribute, value);
    ctx->lastRc = -1;
    traceMIN(ctx->log, kHere, "Plugin [%S] config set [%S] = [%S]", plugin, attribute, value);
    return kOk;
}

int ZUK_sw_setopt_variable(ZUKSwCtx* ctx, const wchar_t* name, const wchar_t* value, const wchar_t* scope) {
    constexpr char kHere[] = "ZUK_sw_setopt_variables";
    if (ctx == nullptr) return kNoContext;
    if (name == nullptr || value == nullptr || scope == nullptr) {
        traceMIN(ctx->log, kHere, "Error: some of the attributes are NULL");
        return kNullOption;
    }
    ctx->presetVariables[name] = {value, scope};
    ctx->lastRc = -1;
    traceMAX(ctx->log, kHere, "Variable [%S] set with value [%S] for scope [%S]", name, value, scope);
    return kOk;
}

int ZUK_sw_free(ZUKSwCtx* ctx) {
    if (ctx == nullptr) return kNoContext;
    traceMAX(ctx->log, "ZUK_sw_free", "Deleting context");
    if (ctx->tmpDir != nullptr) {
        ctx->tmpDir->deleteFiles(true);
        delete ctx->tmpDir;
        ctx->tmpDir = nullptr;
    }
    delete ctx->log;
    ctx->log = nullptr;
    SW_deleteResults(ctx);
    delete ctx;
    return kOk;
}
