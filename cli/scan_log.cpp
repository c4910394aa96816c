#include "cli/scan_log.h"

#include <unistd.h>

#include <cstdio>

#include "cli/library.h"
#include "cli/text.h"

namespace {

const std::string kScannerName = "zuksw: ";
const std::string kError = "error: ";

bool startsWith(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

}  // namespace

ScanLog::ScanLog(bool verbose) : verbose_(verbose), terminal_(isatty(STDERR_FILENO) != 0) {}

void ScanLog::receive(int level, int logger, void* userData, const char* location, const char* text) {
    ScanLog& log = *static_cast<ScanLog*>(userData);
    if (log.verbose_) printMessage(level, logger, nullptr, location, text);
    // The library puts each line of the scanner's into brackets behind a word of its own.
    const std::string message = text;
    const std::size_t begin = message.find('[' + kScannerName);
    if (begin == std::string::npos || message.back() != ']') return;
    const std::size_t first = begin + 1 + kScannerName.size();
    log.noteScannerLine(message.substr(first, message.size() - 1 - first));
}

void ScanLog::noteScannerLine(const std::string& line) {
    if (startsWith(line, kError)) {
        complaint_ = line.substr(kError.size());
    } else if (terminal_ && !verbose_) {
        std::fprintf(stderr, "zuk: %s\n", toUtf8(printable(fromLocale(line.c_str()))).c_str());
    }
}
