#pragma once

#include <gtest/gtest.h>
#include <zuk.h>

#include <string>

#include "frame/context.h"
#include "frame/narrow.h"
#include "frame/temporary_dir.h"
#include "tests/support/files.h"
#include "tests/support/log_recorder.h"
#include "tests/support/redirected_open.h"
#include "tests/support/temporary_folder.h"

// The paths that `dir` handed out whose last component begins with `prefix`, in order.
inline std::vector<std::string> filesNamed(const TemporaryDir& dir, const std::string& prefix) {
    std::vector<std::string> found;
    for (const std::wstring& file : dir.files) {
        const std::string path = narrow(file);
        if (std::filesystem::path(path).filename().string().rfind(prefix, 0) == 0) found.push_back(path);
    }
    return found;
}

// A library context on a machine without an installation file, with a home directory of the test's own to
// put scanners into and a directory of its own to work in.
class LibraryFixture : public testing::Test {
  protected:
    LibraryFixture() {
        std::filesystem::create_directory(folder.path() + "/home");
        std::filesystem::create_directory(folder.path() + "/tmp");
        const int status = ZUK_init("test", LogRecorder::callback, &libraryLog, widen(temp()).c_str(),
                                    widen(home()).c_str(), &library);
        if (status != 0) throw std::runtime_error("ZUK_init failed with " + std::to_string(status));
    }
    ~LibraryFixture() override { ZUK_free(library); }

    std::string home() const { return folder.path() + "/home"; }
    std::string temp() const { return folder.path() + "/tmp"; }

    // Installs a shell script as "zukhw" or "zuksw". In zukhw $2 is the configuration file and $4 the output
    // file; in zuksw $2, $4, $6 and $8 are configuration, output, warnings and signatures.
    void installScanner(const std::string& name, const std::string& body) const {
        folder.script("home/" + name, body);
    }

    TemporaryFolder folder;
    RedirectedOpen noInstallation{"/etc/zuk/zuk.ini", ""};
    LogRecorder libraryLog;
    ZUKCtx* library = nullptr;
};
