#pragma once

#include "frame/temporary_dir.h"
#include "hw/context.h"
#include "tests/support/library_fixture.h"

// A hardware context with a recorder for its own messages.
class HardwareFixture : public LibraryFixture {
  protected:
    HardwareFixture() {
        if (ZUK_hw_init(library, LogRecorder::callback, &log, &ctx) != 0)
            throw std::runtime_error("ZUK_hw_init");
    }
    ~HardwareFixture() override { ZUK_hw_free(ctx); }

    // Installs a scanner that writes `xml` and runs it.
    int runWithOutput(const std::string& xml) {
        const std::string file = folder.file("output.xml", xml);
        installScanner("zukhw", "cat '" + file + "' > \"$4\"");
        return ZUK_hw_run(ctx);
    }

    // Enables every group and runs a scanner that writes `xml`; the log starts afresh afterwards.
    void scan(const std::string& xml) {
        ASSERT_EQ(0, ZUK_hw_setopt(ctx, 0, 1));
        ASSERT_EQ(0, runWithOutput(xml));
        log.clear();
    }

    LogRecorder log;
    ZUKHwCtx* ctx = nullptr;
};
