#include "tests/zuksw/made_trees.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

#include "tests/zuksw/archive_builder.h"
#include "tests/zuksw/elf_builder.h"

namespace {

using Kind = MadeTree::Kind;

const std::map<std::string, Kind> kKinds = {{"elf", Kind::kElf},   {"go", Kind::kGo},
                                            {"text", Kind::kText}, {"jar", Kind::kJar},
                                            {"link", Kind::kLink}, {"grow", Kind::kGrow}};

std::string unescaped(const std::string& text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            bytes += text[i];
            continue;
        }
        const char next = text[++i];
        bytes += next == 'n' ? '\n' : next == 't' ? '\t' : next == '0' ? '\0' : next;
    }
    return bytes;
}

std::vector<std::string> fieldsOf(const std::string& line) {
    constexpr std::string_view kBetween = " | ";
    std::vector<std::string> fields;
    std::size_t begin = 0;
    for (std::size_t end = line.find(kBetween); end != line.npos; end = line.find(kBetween, begin)) {
        fields.push_back(unescaped(line.substr(begin, end - begin)));
        begin = end + kBetween.size();
    }
    fields.push_back(unescaped(line.substr(begin)));
    return fields;
}

void readLine(const std::string& theme, const std::string& line, std::vector<MadeTree>* trees) {
    const std::size_t blank = line.find(' ');
    const std::string word = line.substr(0, blank);
    const std::string rest = line.substr(blank == line.npos ? line.size() : blank + 1);
    if (word == "tree") {
        trees->push_back({theme, rest, {}, {}, {}});
        return;
    }
    MadeTree& tree = trees->at(trees->size() - 1);
    if (word == "finds") {
        tree.findings.push_back(rest);
        return;
    }
    std::vector<std::string> fields = fieldsOf(rest);
    const std::string first = fields.at(0);
    fields.erase(fields.begin());
    if (word == "preset") {
        tree.presets.emplace_back(first, fields.at(0));
        return;
    }
    const auto kind = kKinds.find(word);
    if (kind == kKinds.end()) throw std::runtime_error("no kind of file: " + line);
    tree.files.push_back({kind->second, first, std::move(fields)});
}

void readFile(const std::string& path, std::vector<MadeTree>* trees) {
    std::ifstream file(path);
    const std::string theme = std::filesystem::path(path).stem();
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line[0] != '#') readLine(theme, line, trees);
    }
}

// What the Go linker writes about the program, in the form since Go 1.18.
std::string buildInformation(const std::string& mainPackage) {
    const std::string modules = std::string(16, 'b') + "path\t" + mainPackage + "\n" + std::string(16, 'e');
    std::string bytes = "\xFF Go buildinf:";
    bytes += '\x08';
    bytes += '\x02';
    bytes.resize(32, '\0');
    return bytes + '\x06' + "go1.21" + static_cast<char>(modules.size()) + modules;
}

std::string elfFile(const std::string& mainPackage, const std::string& content) {
    ElfBuilder builder(true, false);
    if (!mainPackage.empty()) builder.add(".go.buildinfo", SHT_PROGBITS, buildInformation(mainPackage));
    builder.add(".rodata", SHT_PROGBITS, '\0' + content + '\0');
    return builder.build();
}

}  // namespace

std::vector<MadeTree> readMadeTrees() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(ZUK_SOURCE_DIR "/tests/data/catalogue")) {
        if (entry.path().extension() == ".txt") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<MadeTree> trees;
    for (const std::string& path : paths) readFile(path, &trees);
    return trees;
}

std::string contentOf(const MadeTree::File& file, bool hollow) {
    const std::vector<std::string>& given = file.arguments;
    switch (file.kind) {
        case Kind::kElf:
            return elfFile("", hollow || given.empty() ? "" : given[0]);
        case Kind::kGo:
            return elfFile(hollow ? "example.org/other" : given.at(0), hollow ? "" : given.at(1));
        case Kind::kJar:
            return packArchive(zipForm, {{hollow ? "other" : given.at(0), hollow ? "" : given.at(1)}});
        default:
            return hollow ? "" : given.at(0);
    }
}
