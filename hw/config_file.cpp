#include "hw/config_file.h"

#include "frame/config_frame.h"
#include "frame/file.h"
#include "frame/trace.h"
#include "hw/context.h"

namespace {

constexpr int kOk = 0;
constexpr int kNotWritten = 102;

bool writeGroups(ZUKHwCtx* ctx, FILE* file) {
    for (const HWGroup* group = HW_GROUPS; group->configName != nullptr; ++group) {
        if (ctx->enabled[group->id] != 1) continue;
        const bool written = HW_writeData(ctx, file, "\t\t<Group Name=\"") &&
                             HW_writeData(ctx, file, group->configName) && HW_writeData(ctx, file, "\"/>\n");
        if (!written) return false;
    }
    return true;
}

}  // namespace

bool HW_writeData(ZUKHwCtx* /*ctx*/, FILE* stream, const char* text) {
    return writeText(stream, text);
}

int HW_generateHWConfigFile(ZUKHwCtx* ctx, const wchar_t* path) {
    const File file = openForWriting(path);
    if (!file) return kNotWritten;

    const bool written = HW_writeData(ctx, file.get(), kConfigHead) &&
                         HW_writeData(ctx, file.get(), "\t\t<Hardware version=\"1.0\">\n") &&
                         writeGroups(ctx, file.get()) && HW_writeData(ctx, file.get(), "\t\t</Hardware>\n") &&
                         HW_writeData(ctx, file.get(), kConfigFoot) && flush(file.get());
    if (written) return kOk;
    traceMIN(ctx->log, "generateHWConfigFile()", "Error during write [%S]", path);
    return kNotWritten;
}
