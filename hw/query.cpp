#include "hw/query.h"

#include <cstdlib>
#include <cwchar>

#include "frame/trace.h"
#include "hw/context.h"

// The three queries word and weigh the same mistake differently. Callers filter on these lines, so each
// keeps its own.

namespace {

enum Status {
    kOk = 0,
    kNoContext = 3,
    kBadGroup = 101,
    kBadInstance = 105,
    kNoField = 106,
    kNoScan = 107,
    kDisabled = 108,
    kNullPointer = 109
};

template <typename Instances>
bool holds(const Instances& instances, int instance) {
    return instance >= 0 && static_cast<std::size_t>(instance) < instances.size();
}

// The first field of that name, or null. Lengths are compared first: most names differ there.
const HWField* findField(const HWInstance& instance, const wchar_t* name) {
    const std::size_t length = std::wcslen(name);
    for (const HWField& field : instance) {
        if (field.first.size() == length && std::wmemcmp(field.first.data(), name, length) == 0)
            return &field;
    }
    return nullptr;
}

}  // namespace

void HW_cleanFields(std::map<int, std::vector<const wchar_t**>>& fields) {
    for (int slot = 0; slot < HW_GROUP_SLOTS; ++slot) {
        std::vector<const wchar_t**>& instances = fields[slot];
        for (const wchar_t** names : instances) std::free(names);
        instances.clear();
    }
}

int ZUK_hw_get_group_instances(ZUKHwCtx* ctx, int group, int* count) {
    constexpr char kHere[] = "ZUK_hw_get_group_instances";
    if (ctx == nullptr) return kNoContext;
    if (count == nullptr) return kNullPointer;
    if (ctx->returnCode != 0) return kNoScan;
    traceMAX(ctx->log, kHere, "Retrieving data for group [%d]", group);
    if (!HW_isGroupId(group)) {
        traceMAX(ctx->log, kHere, "Wrong group id [%d]", group);
        return kBadGroup;
    }
    if (ctx->enabled[group] != 1) {
        traceMIN(ctx->log, kHere, "Wrong group id [%d] - group not enabled", group);
        return kDisabled;
    }
    *count = static_cast<int>(ctx->results[group].size());
    traceMAX(ctx->log, kHere, "Size of group [%d] = [%d]", group, *count);
    return kOk;
}

int ZUK_hw_get_fields(ZUKHwCtx* ctx, int group, int instance, const wchar_t*** names, int* count) {
    constexpr char kHere[] = "ZUK_hw_get_fields";
    if (ctx == nullptr) return kNoContext;
    traceMAX(ctx->log, kHere, "Retrieving fields  from group [%d] instance [%d]", group, instance);
    if (names == nullptr || count == nullptr) return kNullPointer;
    if (ctx->returnCode != 0) {
        traceMIN(ctx->log, kHere, "Wrong returncode of previous scan [%d]", ctx->returnCode);
        return kNoScan;
    }
    if (!HW_isGroupId(group)) {
        traceMIN(ctx->log, kHere, "Wrong group [%d]", group);
        return kBadGroup;
    }
    if (ctx->enabled[group] != 1) {
        traceMIN(ctx->log, kHere, "Wrong group [%d] - group not enabled", group);
        return kDisabled;
    }
    const std::vector<const wchar_t**>& arrays = ctx->fields[group];
    if (!holds(arrays, instance)) {
        traceMIN(ctx->log, kHere, "Wrong instance [%d]", instance);
        return kBadInstance;
    }
    const auto index = static_cast<std::size_t>(instance);
    *count = static_cast<int>(ctx->results[group][index].size());
    *names = arrays[index];
    traceMAX(ctx->log, kHere, "Retrieved %d fields", *count);
    return kOk;
}

int ZUK_hw_get_value(ZUKHwCtx* ctx, int group, int instance, const wchar_t* field, const wchar_t** value) {
    constexpr char kHere[] = "ZUK_hw_get_value";
    if (ctx == nullptr) return kNoContext;
    if (field == nullptr || value == nullptr) return kNullPointer;
    traceMAX(ctx->log, kHere, "Retrieving field [%S] from group [%d] instance [%d]", field, group, instance);
    if (ctx->returnCode != 0) return kNoScan;
    if (!HW_isGroupId(group)) {
        traceMAX(ctx->log, kHere, "No such group [%d]", group);
        return kBadGroup;
    }
    if (ctx->enabled[group] != 1) {
        traceMAX(ctx->log, kHere, "Wrong group [%d] - group not enabled", group);
        return kDisabled;
    }
    const std::vector<HWInstance>& instances = ctx->results[group];
    if (!holds(instances, instance)) {
        traceMAX(ctx->log, kHere, "Wrong instance [%d] for group [%d]", instance, group);
        return kBadInstance;
    }
    const HWField* found = findField(instances[static_cast<std::size_t>(instance)], field);
    if (found == nullptr) {
        traceMID(ctx->log, kHere, "Field not found [%S]", field);
        return kNoField;
    }
    traceMAX(ctx->log, kHere, "Filed [%S] found with value [%S]", found->first.c_str(),
             found->second.c_str());
    *value = found->second.c_str();
    return kOk;
}
