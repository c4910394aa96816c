#include <cwchar>

#include "frame/trace.h"
#include "sw/context.h"

namespace {

enum Status {
    kOk = 0,
    kNoContext = 3,
    kNoEvaluation = 206,
    kNullResult = 207,
    kNoVariable = 208,
    kNullPointer = 209,
    kNoGuid = 210
};

// Hands out one text of a result, as ZUK_sw_get_metadata and ZUK_sw_get_guid both do.
int getText(ZUKSwCtx* ctx, const ZUKSwResult* result, std::wstring ZUKSwResult::*text, const wchar_t** out) {
    if (ctx == nullptr) return kNoContext;
    if (ctx->lastRc != 0) return kNoEvaluation;
    if (out == nullptr) return kNullPointer;
    if (result == nullptr) {
        // Both have always spoken under this name, and callers filter on it.
        traceMIN(ctx->log, "ZUK_sw_get_results", "ERROR: Wrong result");
        return kNullResult;
    }
    *out = (result->*text).c_str();
    return kOk;
}

}  // namespace

int ZUK_sw_get_returncode(ZUKSwCtx* ctx, int* rc) {
    constexpr char kHere[] = "ZUK_sw_get_returncode";
    if (ctx == nullptr) return kNoContext;
    if (rc == nullptr) {
        traceMAX(ctx->log, kHere, "Wrong pointer for RC");
        return kNullPointer;
    }
    traceMAX(ctx->log, kHere, "Returning previous rc [%d] [%s]", ctx->lastRc,
             ctx->lastRc == 0 ? "TRUE" : "FALSE");
    *rc = ctx->lastRc;
    return kOk;
}

int ZUK_sw_get_results(ZUKSwCtx* ctx, ZUKSwResult*** results, unsigned* count) {
    constexpr char kHere[] = "ZUK_sw_get_results";
    if (ctx == nullptr) return kNoContext;
    if (ctx->lastRc != 0) {
        traceMIN(ctx->log, kHere, "ERROR: Wrong last return code");
        return kNoEvaluation;
    }
    if (results == nullptr || count == nullptr) {
        traceMAX(ctx->log, kHere, "Wrong table pointer");
        return kNullPointer;
    }
    *count = static_cast<unsigned>(ctx->results.size());
    traceMAX(ctx->log, kHere, "Requesting all results. Size: %d", *count);
    if (*count < 1) {
        traceMAX(ctx->log, kHere, "No results, passing NULL");
        *results = nullptr;
    } else {
        *results = ctx->resultArray;
    }
    return kOk;
}

int ZUK_sw_get_warnings(ZUKSwCtx* ctx, const wchar_t*** warnings, unsigned* count) {
    constexpr char kHere[] = "ZUK_sw_get_warnings";
    if (ctx == nullptr) return kNoContext;
    traceMAX(ctx->log, kHere, "Retrieving Warnings");
    if (warnings == nullptr || count == nullptr) {
        traceMAX(ctx->log, kHere, "Error: wrong pointer");
        return kNullPointer;
    }
    if (ctx->warningArray != nullptr) {
        *warnings = ctx->warningArray;
        *count = static_cast<unsigned>(ctx->warnings.size());
    }
    return kOk;
}

int ZUK_sw_get_variables(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t*** names, unsigned* count) {
    if (ctx == nullptr) return kNoContext;
    if (ctx->lastRc != 0) return kNoEvaluation;
    if (names == nullptr || count == nullptr) return kNullPointer;
    if (result == nullptr) return kNullResult;
    *count = static_cast<unsigned>(result->variables.size());
    traceMAX(ctx->log, "ZUK_sw_get_variables", "Requesting all variables for result [SIZE: %d]", *count);
    *names = *count > 0 ? result->variableNames : nullptr;
    return kOk;
}

int ZUK_sw_get_value(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t* name, const wchar_t** value) {
    if (ctx == nullptr) return kNoContext;
    if (ctx->lastRc != 0) return kNoEvaluation;
    if (result == nullptr) return kNullResult;
    if (value == nullptr) return kNullPointer;
    if (name == nullptr) return kNoVariable;
    const auto variable = result->variables.find(name);
    if (variable == result->variables.end()) return kNoVariable;
    *value = variable->second.c_str();
    return kOk;
}

int ZUK_sw_get_metadata(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t** metadata) {
    return getText(ctx, result, &ZUKSwResult::metadata, metadata);
}

int ZUK_sw_get_guid(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t** guid) {
    return getText(ctx, result, &ZUKSwResult::guid, guid);
}

int ZUK_sw_find_result_by_guid(ZUKSwCtx* ctx, const wchar_t* guid, ZUKSwResult** result) {
    if (ctx == nullptr) return kNoContext;
    if (result == nullptr) return kNullPointer;
    for (ZUKSwResult* candidate : ctx->results) {
        if (candidate->guid != guid) continue;
        *result = candidate;
        return kOk;
    }
    return kNoGuid;
}
