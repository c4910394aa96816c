// What does the tree cost on top of the parse?
#include <stdexcept>

#include "bench/support/reading_bench.h"
#include "bench/support/scanner_files.h"
#include "frame/xml_parser.h"

namespace {
std::shared_ptr<void> readTree(const std::string& path) {
    XMLParser parser(nullptr, std::wstring(path.begin(), path.end()).c_str());
    if (parser.errors != 0) throw std::runtime_error("the tree was not read");
    return nullptr;
}
}  // namespace

int main(int argc, char** argv) {
    return runReadingBench(
        argc, argv,
        {{"hardware-tree", writeHardwareFile, readTree}, {"software-tree", writeSoftwareFile, readTree}});
}
