// Runs a fuzz target once for each file named, and for each file of each folder named.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {
void replay(const std::filesystem::path& path) {
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);  // the last line names the culprit of a crash
    std::ifstream file(path, std::ios::binary);
    const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}
}  // namespace

int main(int argc, char** argv) {
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            replay(argv[i]);
            ++inputs;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            replay(entry.path());
            ++inputs;
        }
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? 0 : 1;
}
