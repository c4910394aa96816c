#pragma once

#include <string>

// Receives what the library says during a software scan. With `verbose` all of it is shown on standard error;
// else, when that is a terminal, the scanner's own lines.
class ScanLog {
  public:
    explicit ScanLog(bool verbose);

    bool showsProgress() const { return verbose_ || terminal_; }
    // The scanner's last complaint, without its name; empty when there was none.
    const std::string& complaint() const { return complaint_; }

    // A ZUK_log_callback; userData: the ScanLog.
    static void receive(int level, int logger, void* userData, const char* location, const char* text);

  private:
    void noteScannerLine(const std::string& line);

    bool verbose_;
    bool terminal_;
    std::string complaint_;
};
