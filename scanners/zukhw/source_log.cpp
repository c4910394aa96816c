#include "scanners/zukhw/source_log.h"

void SourceLog::malformed(std::string_view source, std::size_t offset) {
    ++malformed_;
    if (items_.size() < kMaxMalformed) {
        items_.push_back('/' + std::string(source) + '@' + std::to_string(offset));
    }
}

std::vector<std::string> SourceLog::deniedPaths() const {
    std::vector<std::string> paths;
    for (const std::string& path : denied_) {
        if (paths.size() == kMaxDenied) break;
        paths.push_back('/' + path);
    }
    return paths;
}
