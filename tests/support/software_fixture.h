#pragma once

#include "frame/temporary_dir.h"
#include "sw/context.h"
#include "tests/support/library_fixture.h"

// A software context with a recorder for its own messages.
class SoftwareFixture : public LibraryFixture {
  protected:
    SoftwareFixture() {
        if (ZUK_sw_init(library, LogRecorder::callback, &log, &ctx) != 0)
            throw std::runtime_error("ZUK_sw_init");
    }
    ~SoftwareFixture() override { ZUK_sw_free(ctx); }

    // Installs a scanner that writes these two files.
    void installWriter(const std::string& output, const std::string& warnings) {
        const std::string out = folder.file("output.xml", output);
        const std::string warn = folder.file("warnings.xml", warnings);
        installScanner("zuksw", "cat '" + out + "' > \"$4\"\ncat '" + warn + "' > \"$6\"");
    }
    // Evaluates with a scanner that writes these two files.
    int evaluateWith(const std::string& output, const std::string& warnings = "<Warnings/>") {
        installWriter(output, warnings);
        return ZUK_sw_evaluate(ctx, L"<Signature/>");
    }

    std::vector<std::string> filesNamed(const std::string& prefix) const {
        return ::filesNamed(*ctx->tmpDir, prefix);
    }
    // Makes every further request for a file name fail.
    void loseDirectory() { ctx->tmpDir->initialised = false; }

    LogRecorder log;
    ZUKSwCtx* ctx = nullptr;
};
