#include "frame/standard_output.h"

#include <string>

#include "frame/log.h"
#include "platform/runtime.h"

void logStandardOutput(Stream& output, ZUKlog* log, const char* location) {
    // A string that grows byte by byte costs more than the reading: the length is kept apart from it.
    std::string line(256, '\0');
    std::size_t length = 0;
    for (int byte = output.read(); byte >= 0; byte = output.read()) {
        if (byte == '\n') {
            line[length] = '\0';
            if (log != nullptr) log->traceMAX(location, "STDOUT data: [%s]", line.c_str());
            length = 0;
        } else if (byte != '\r') {
            line[length] = static_cast<char>(byte);
            if (++length == line.size()) line.resize(2 * length);
        }
    }
}
