#include "sw/config_file.h"

#include "frame/config_frame.h"
#include "frame/file.h"
#include "frame/narrow.h"
#include "frame/temporary_dir.h"
#include "frame/trace.h"
#include "sw/context.h"

namespace {

enum Status { kOk = 0, kNoContext = 3, kNotWritten = 201 };

// Writes the texts one after the other until a write fails.
template <typename... Texts>
bool writeAll(ZUKSwCtx* ctx, FILE* file, Texts... texts) {
    return (SW_writeData(ctx, file, texts) && ...);
}

bool writeVariables(ZUKSwCtx* ctx, FILE* file) {
    if (ctx->presetVariables.empty()) return true;
    if (!writeAll(ctx, file, "\t\t\t<PresetVariables>\n")) return false;
    for (const auto& [name, setting] : ctx->presetVariables) {
        const auto& [value, guid] = setting;
        const bool written = writeAll(ctx, file, "\t\t\t\t<Variable name=\"", name.c_str(), "\" value=\"",
                                      value.c_str(), "\" guid=\"", guid.c_str(), "\" />\n");
        if (!written) return false;
    }
    return writeAll(ctx, file, "\t\t\t</PresetVariables>\n");
}

bool writePlugin(ZUKSwCtx* ctx, FILE* file, const std::wstring& plugin,
                 const std::vector<std::pair<std::wstring, std::wstring>>& attributes) {
    if (attributes.empty()) return true;
    if (!writeAll(ctx, file, "\t\t\t\t<Plugin name=\"", plugin.c_str(), "\" version=\"1.0\">\n"))
        return false;
    for (const auto& [attribute, value] : attributes) {
        const bool written = writeAll(ctx, file, "\t\t\t\t\t<Attribute name=\"", attribute.c_str(),
                                      "\" value=\"", value.c_str(), "\"/>\n");
        if (!written) return false;
    }
    return writeAll(ctx, file, "\t\t\t\t</Plugin>\n");
}

bool writePlugins(ZUKSwCtx* ctx, FILE* file) {
    if (ctx->pluginConfig.empty()) return true;
    if (!writeAll(ctx, file, "\t\t\t<Plugins>\n")) return false;
    for (const auto& [plugin, attributes] : ctx->pluginConfig) {
        if (!writePlugin(ctx, file, plugin, attributes)) return false;
    }
    return writeAll(ctx, file, "\t\t\t</Plugins>\n");
}

}  // namespace

bool SW_writeData(ZUKSwCtx* /*ctx*/, FILE* stream, const char* text) {
    return writeText(stream, text);
}

bool SW_writeData(ZUKSwCtx* ctx, FILE* stream, const wchar_t* text) {
    return text != nullptr && SW_writeData(ctx, stream, narrow(text).c_str());
}

int SW_CreateConfigFile(ZUKSwCtx* ctx, std::wstring& path) {
    if (ctx == nullptr) return kNoContext;
    const int named = ctx->tmpDir->getTmpFile(path, L"cfg_", L".xml");
    traceMAX(ctx->log, "SW_CreateConfigFile", "Creating a config file [%S]", path.c_str());
    if (named != kOk) return kNotWritten;

    const File file = openForWriting(path);
    if (!file) return kOk;

    const bool written = writeAll(ctx, file.get(), kConfigHead, "\t\t<XSE version=\"1.0\">\n") &&
                         writeVariables(ctx, file.get()) && writePlugins(ctx, file.get()) &&
                         writeAll(ctx, file.get(), "\t\t</XSE>\n", kConfigFoot) && flush(file.get());
    if (written) return kOk;
    traceMIN(ctx->log, "SW_CreateConfigFile()", "Error during write [%S]", path.c_str());
    return kNotWritten;
}
