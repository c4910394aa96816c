#pragma once

#include <string>
#include <string_view>
#include <vector>

// What a reader of rpm's databases delivers and says of one.
struct RpmReading {
    std::vector<std::string> blobs;
    std::string problem;
};

template <typename Read, typename File>
RpmReading readBlobs(Read read, const File& file) {
    RpmReading reading;
    reading.problem = read(file, [&](std::string_view blob) { reading.blobs.emplace_back(blob); });
    return reading;
}
