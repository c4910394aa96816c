#include "frame/standard_output.h"

#include <string>

#include "frame/log.h"
#include "platform/runtime.h"

void logStandardOutput(Stream& output, ZUKlog* log, const char* location) {
    std::string line;
    for (int byte = output.read(); byte >= 0; byte = output.read()) {
        if (byte == '\n') {
            if (log != nullptr) log->traceMAX(location, "STDOUT data: [%s]", line.c_str());
            line.clear();
        } else if (byte != '\r') {
            line.push_back(static_cast<char>(byte));
        }
    }
}
