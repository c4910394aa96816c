#include "bench/support/small_files.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

constexpr std::size_t kFiles = 200;       // in a directory
constexpr std::size_t kDirectories = 50;  // in the one above

}  // namespace

SmallFiles::SmallFiles(const std::string& parent, std::size_t count)
    : path_(parent + "/zuk_bench_tree_XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot create " + path_);
    std::string directory;
    for (std::size_t i = 0; i < count; ++i) {
        if (i % kFiles == 0) {
            const std::size_t number = i / kFiles;
            directory = path_ + "/" + std::to_string(number / kDirectories) + "/" +
                        std::to_string(number % kDirectories);
            std::filesystem::create_directories(directory);
        }
        std::ofstream(directory + "/file-" + std::to_string(i) + (i % 3 == 0 ? ".so.1" : ".txt"))
            << i << '\n';
    }
}

SmallFiles::~SmallFiles() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    ::sync();  // what the system still has to write of them would slow down whatever is measured next
}
