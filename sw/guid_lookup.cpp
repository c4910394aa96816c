#include <algorithm>
#include <cstdlib>

#include "frame/trace.h"
#include "sw/context.h"

namespace {

constexpr char kHere[] = "ZUK_sw_find_results_by_guid";

enum Status { kOk = 0, kNoContext = 3, kNullPointer = 209, kNoGuid = 210 };

std::vector<ZUKSwResult*> collect(const ZUKSwCtx* ctx, const std::wstring& guid) {
    std::vector<ZUKSwResult*> found;
    const auto hasGuid = [&guid](const ZUKSwResult* result) { return result->guid == guid; };
    std::copy_if(ctx->results.begin(), ctx->results.end(), std::back_inserter(found), hasGuid);
    return found;
}

}  // namespace

int ZUK_sw_find_results_by_guid(ZUKSwCtx* ctx, const wchar_t* guid, ZUKSwResult*** results, unsigned* count) {
    if (ctx == nullptr) return kNoContext;
    if (results == nullptr || count == nullptr) {
        traceMAX(ctx->log, kHere, "Wrong pointer");
        return kNullPointer;
    }
    const std::wstring key(guid);
    ZUKSwResult**& cached = ctx->guidResults[key];
    if (cached != nullptr) {
        traceMAX(ctx->log, kHere, "Using cached results");
        *results = cached;
        *count = ctx->guidResultCounts[key];
        return kOk;
    }

    traceMAX(ctx->log, kHere, "generating new results");
    const std::vector<ZUKSwResult*> found = collect(ctx, key);
    if (found.empty()) return kNoGuid;
    cached = static_cast<ZUKSwResult**>(std::malloc(found.size() * sizeof(ZUKSwResult*)));
    if (cached != nullptr) std::copy(found.begin(), found.end(), cached);
    *results = cached;
    *count = static_cast<unsigned>(found.size());
    ctx->guidResultCounts[key] = *count;
    return kOk;
}
