#pragma once

#include <zuk.h>

#include <memory>
#include <optional>
#include <string>

struct ReleaseLibrary {
    void operator()(ZUKCtx* context) const { ZUK_free(context); }
};

// A ZUK_log_callback that shows every message on standard error.
void printMessage(int level, int logger, void* userData, const char* location, const char* text);

// The library, opened for this program. Throws Failure when it cannot be.
class Library {
  public:
    // home: the directory of the scanners; none: the library looks for an installation.
    Library(std::optional<std::string> home, bool verbose);

    ZUKCtx* get() const { return context_.get(); }
    ZUK_log_callback logCallback() const { return log_; }
    bool isVerbose() const { return log_ != nullptr; }
    // The directory of the scanners in words, for messages.
    std::string homeInWords() const;
    // How to call one of the scanners oneself, for messages.
    std::string scanner(const std::string& program) const { return home_ ? *home_ + "/" + program : program; }

  private:
    std::optional<std::string> home_;
    ZUK_log_callback log_;
    std::unique_ptr<ZUKCtx, ReleaseLibrary> context_;
};

// The message with the library's status behind it.
std::string withStatus(const std::string& message, int status);

// Throws Failure when a call that cannot fail here has failed.
void require(int status, const char* call);

// Why a scanner that ended so gave no result. what: "hardware scanner"; program: "zukhw".
std::string scannerFailure(const std::string& what, const std::string& program, int exitStatus,
                           const Library& library);
