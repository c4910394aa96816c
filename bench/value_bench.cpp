// What does reading one value cost on top of finding it? ZUK_hw_get_value with a null callback, against a
// bare walk over the fields of the instance, for the last of them.
#include <zuk.h>

#include <cstdio>
#include <cwchar>

#include "bench/support/measure.h"
#include "frame/log.h"
#include "hw/context.h"

namespace {

constexpr int kRounds = 21;
constexpr int kReads = 200000;
constexpr int kMemory = 3;
constexpr int kFields = 30;

const wchar_t* walk(const HWInstance& instance, const wchar_t* name) {
    const std::size_t length = std::wcslen(name);
    for (const HWField& field : instance) {
        if (field.first.size() == length && std::wmemcmp(field.first.data(), name, length) == 0) {
            return field.second.c_str();
        }
    }
    return nullptr;
}

// A context as a run with one instance of 30 fields leaves it; its names are as long as real ones.
void fill(ZUKHwCtx& ctx, ZUKlog& log) {
    ctx.log = &log;
    ctx.returnCode = 0;
    ctx.enabled[kMemory] = 1;
    HWInstance instance;
    for (int i = 0; i < kFields; ++i) {
        instance.emplace_back(
            L"SomeField" + std::to_wstring(i) + std::wstring(static_cast<std::size_t>(i % 9), L'x'),
            L"value");
    }
    ctx.results[kMemory].push_back(instance);
}

}  // namespace

int main() {
    ZUKlog log(3, nullptr, nullptr);
    ZUKHwCtx ctx{};
    fill(ctx, log);
    const HWInstance& instance = ctx.results[kMemory].front();
    const std::wstring last = instance.back().first;

    std::vector<double> ratios;
    std::vector<double> seconds;
    const wchar_t* volatile seen = nullptr;
    for (int round = 0; round < kRounds; ++round) {
        const double floor = secondsOf([&] {
            for (int i = 0; i < kReads; ++i) seen = walk(instance, last.c_str());
        });
        seconds.push_back(secondsOf([&] {
            for (int i = 0; i < kReads; ++i) {
                const wchar_t* value = nullptr;
                if (ZUK_hw_get_value(&ctx, kMemory, 0, last.c_str(), &value) != 0) std::abort();
                seen = value;
            }
        }));
        ratios.push_back(seconds.back() / floor);
    }
    std::printf("ZUK_hw_get_value %6.2f x walk %8.0f ns a value\n", median(ratios),
                median(seconds) / kReads * 1e9);
    return 0;
}
