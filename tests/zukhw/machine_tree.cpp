#include "tests/zukhw/machine_tree.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "scanners/zukhw/text.h"

namespace {

namespace fs = std::filesystem;

std::string decodeHex(const std::string& hex) {
    std::string bytes;
    for (const std::string_view word : words(hex)) {
        bytes += static_cast<char>(std::stoi(std::string(word), nullptr, 16));
    }
    return bytes;
}

struct Entry {
    std::string head;                // the line without its tab-indented rest
    std::vector<std::string> block;  // the rest, without the tabs
};

std::vector<Entry> entriesOf(std::string_view tree) {
    std::vector<Entry> entries;
    for (const std::string_view line : lines(tree)) {
        if (startsWith(line, "\t") && !entries.empty()) {
            entries.back().block.emplace_back(line.substr(1));
        } else if (!trim(line).empty() && !startsWith(line, "#")) {
            entries.push_back({std::string(line), {}});
        }
    }
    return entries;
}

void writeFile(const fs::path& path, const std::string& content) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    if (startsWith(content, "#!")) fs::permissions(path, fs::perms::owner_exec, fs::perm_options::add);
}

void plant(const Entry& entry, const fs::path& folder) {
    const std::string& head = entry.head;
    std::string block;
    for (const std::string& line : entry.block) block += line + '\n';
    const std::size_t link = head.find(" -> ");
    const std::size_t bytes = head.find(" = ");
    const std::size_t line = head.find(": ");
    if (link != std::string::npos) {
        const fs::path path = folder / head.substr(0, link);
        fs::create_directories(path.parent_path());
        fs::create_symlink(head.substr(link + 4), path);
    } else if (line != std::string::npos) {
        writeFile(folder / head.substr(0, line), head.substr(line + 2) + '\n');
    } else if (bytes != std::string::npos) {
        writeFile(folder / head.substr(0, bytes), decodeHex(head.substr(bytes + 3) + ' ' + block));
    } else if (endsWith(head, ":")) {
        writeFile(folder / head.substr(0, head.size() - 1), block);
    } else if (endsWith(head, "/")) {
        fs::create_directories(folder / head);
    } else {
        throw std::runtime_error("machine tree: cannot read the line '" + head + "'");
    }
}

}  // namespace

void plantMachine(std::string_view tree, const std::string& folder) {
    for (const Entry& entry : entriesOf(tree)) plant(entry, folder);
}
