#include "hw/context.h"

#include <algorithm>
#include <new>

#include "frame/context.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"
#include "hw/query.h"

namespace {

constexpr int kLogLevel = 3;

enum Status { kOk = 0, kNoContext = 3, kNoRecord = 5, kBadValue = 7, kBadGroup = 101, kNullPointer = 109 };

}  // namespace

void HW_clearResults(ZUKHwCtx* ctx) {
    ctx->results.clear();
    HW_cleanFields(ctx->fields);
    for (int slot = 0; slot < HW_GROUP_SLOTS; ++slot) {
        ctx->results[slot];
        ctx->fields[slot];
    }
}

int ZUK_hw_init(ZUKCtx* library, ZUK_log_callback callback, void* user_data, ZUKHwCtx** out) {
    constexpr char kHere[] = "ZUK_hw_init";
    if (library == nullptr) return kNoContext;
    auto* ctx = new (std::nothrow) ZUKHwCtx;
    if (ctx == nullptr) {
        *out = nullptr;
        return kNoRecord;
    }

    ctx->library = library;
    ctx->homeDir = library->homeDir;
    ctx->log = new ZUKlog(kLogLevel, callback, user_data);
    ctx->tmpDir = new TemporaryDir(ctx->log, library->tmpDir->getBasePath());
    HW_clearResults(ctx);

    if (ctx->tmpDir->init(L"zukhw") != 0) {
        traceMAX(ctx->log, kHere, "Can't create temporary DIR: %S", ctx->tmpDir->getBasePath());
    }
    if (ctx->tmpDir->getTmpFile(ctx->initFile, L"hw_", L".xml") != 0) {
        traceMAX(ctx->log, kHere, "Error in TMP file creation: %S", ctx->initFile.c_str());
    }
    *out = ctx;
    return kOk;
}

int ZUK_hw_setopt(ZUKHwCtx* ctx, int group, unsigned char value) {
    constexpr char kHere[] = "ZUK_hw_setopt";
    if (ctx == nullptr) return kNoContext;
    if (value > 1) return kBadValue;

    const char* text = value == 1 ? "true" : "false";
    if (group == 0) {
        traceMAX(ctx->log, kHere, "Setting all opts: [%s]", text);
        std::fill(std::begin(ctx->enabled), std::end(ctx->enabled), value);
    } else if (HW_isGroupId(group)) {
        traceMAX(ctx->log, kHere, "Setting opt: [%d=%s]", group, text);
        ctx->enabled[group] = value;
    } else {
        return kBadGroup;
    }
    ctx->returnCode = -1;  // earlier results are not those of these options
    return kOk;
}

int ZUK_hw_get_group_name(ZUKHwCtx* ctx, int group, const wchar_t** name) {
    if (ctx == nullptr) return kNoContext;
    if (!HW_isGroupId(group)) return kBadGroup;
    traceMAX(ctx->log, "ZUK_hw_get_group_name", "Retrieving group id [%d]", group);
    for (const HWGroup* row = HW_GROUPS; row->id != HW_GROUP_SLOTS; ++row) {
        if (row->id != group) continue;
        *name = row->groupName;
        return kOk;
    }
    return kBadGroup;
}

int ZUK_hw_get_returncode(ZUKHwCtx* ctx, int* code) {
    if (ctx == nullptr) return kNoContext;
    if (code == nullptr) return kNullPointer;
    *code = ctx->returnCode;
    return kOk;
}

int ZUK_hw_free(ZUKHwCtx* ctx) {
    if (ctx == nullptr) return kNoContext;
    if (ctx->tmpDir != nullptr) {
        ctx->tmpDir->deleteFiles(true);
        delete ctx->tmpDir;
    }
    HW_cleanFields(ctx->fields);
    traceMAX(ctx->log, "ZUK_hw_free", "Deleting logger 0, last call");
    delete ctx->log;
    delete ctx;
    return kOk;
}
