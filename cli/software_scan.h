#pragma once

#include <memory>
#include <vector>

#include "cli/library.h"
#include "cli/scan_log.h"
#include "cli/signature_file.h"
#include "cli/software.h"
#include "cli/sw_settings.h"

struct ReleaseSoftwareScan {
    void operator()(ZUKSwCtx* context) const { ZUK_sw_free(context); }
};

// One software scan. The library must outlive it.
class SoftwareScan {
  public:
    explicit SoftwareScan(const Library& library);
    SoftwareScan(const SoftwareScan&) = delete;
    SoftwareScan& operator=(const SoftwareScan&) = delete;

    void set(const Preset& preset);
    void set(const PluginSetting& setting);
    // Evaluates the signatures of the files, at least one, in one scan. Throws Failure with the remedy.
    void run(const std::vector<SignatureFile>& files);
    // What the last run found; the names are taken from `names`.
    std::vector<Software> results(const SignatureNames& names) const;
    std::vector<Warning> warnings() const;

  private:
    // Several files are given to the scanner as one; throws Failure for one that cannot be part of it.
    void throwIfUnfit(const std::vector<SignatureFile>& files) const;
    void throwIfFailed(int status, const std::vector<SignatureFile>& files) const;
    std::string rejection(const std::vector<SignatureFile>& files) const;
    std::string checkRemedy(const std::string& path) const;
    Software read(const ZUKSwResult* result, const SignatureNames& names) const;

    const Library& library_;
    ScanLog log_;
    std::unique_ptr<ZUKSwCtx, ReleaseSoftwareScan> context_;
};
