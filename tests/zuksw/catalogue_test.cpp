// The signatures that are shipped: each finds its product in a made tree, and nothing else does.
#include <openssl/evp.h>
#include <sys/utsname.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "tests/support/shell.h"
#include "tests/zuksw/catalogue_reader.h"
#include "tests/zuksw/made_trees.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

constexpr std::string_view kRunningKernel = "Linux kernel running";  // found on every machine

class CatalogueTest : public ScanTest {
  protected:
    void build(const MadeTree& tree, bool hollow = false) {
        for (const MadeTree::File& made : tree.files) {
            if (made.kind == MadeTree::Kind::kLink) {
                if (!hollow) link(made.arguments.at(0), made.path);
            } else if (made.kind == MadeTree::Kind::kGrow) {
                std::filesystem::resize_file(treePath(made.path), std::stoull(made.arguments.at(0)));
            } else {
                file(made.path, contentOf(made, hollow));
            }
        }
        for (const auto& [name, value] : tree.presets)
            presets_.append("<Variable guid=\"\" name=\"")
                .append(name)
                .append("\" value=\"")
                .append(value)
                .append("\"/>");
    }

    // "name | version | path" of all that the catalogue finds.
    std::set<std::string> findings() {
        std::set<std::string> found;
        for (Match& match : scan(catalogueText(), {}, presets_).matches) {
            if (match.name == kRunningKernel) continue;
            found.insert(match.name + " | " + match.variables["version"] + " | " + match.variables["path"]);
        }
        return found;
    }

    // Takes trees from the front, into one machine, until one needs a path that another one has.
    std::vector<MadeTree> takeTogether(std::vector<MadeTree>* trees) {
        std::set<std::string> paths;
        std::vector<MadeTree> together;
        while (!trees->empty()) {
            const MadeTree& next = trees->front();
            const auto taken = [&](const MadeTree::File& made) { return paths.count(made.path) != 0; };
            if (std::any_of(next.files.begin(), next.files.end(), taken)) break;
            for (const MadeTree::File& made : next.files) paths.insert(made.path);
            together.push_back(next);
            trees->erase(trees->begin());
        }
        return together;
    }

    // What the first has and the second lacks.
    static std::vector<std::string> without(const std::set<std::string>& first,
                                            const std::set<std::string>& second) {
        std::vector<std::string> rest;
        std::set_difference(first.begin(), first.end(), second.begin(), second.end(),
                            std::back_inserter(rest));
        return rest;
    }

    // Makes room for the next machine.
    void clear() {
        for (const auto& entry : std::filesystem::directory_iterator(tree_.path()))
            std::filesystem::remove_all(entry.path());
        presets_.clear();
    }

    std::string presets_;
};

std::vector<std::string> themes() {
    std::vector<std::string> names;
    for (const std::string& path : catalogueFiles()) names.push_back(std::filesystem::path(path).stem());
    return names;
}

class MadeTreeTest : public CatalogueTest, public ::testing::WithParamInterface<std::string> {};

// The place is part of what is compared, so a product that shows in the tree of another one is seen, too.
TEST_P(MadeTreeTest, EveryProductIsFoundInItsTreeAndNothingElse) {
    std::vector<MadeTree> trees;
    for (MadeTree& tree : readMadeTrees()) {
        if (tree.theme == GetParam()) trees.push_back(std::move(tree));
    }
    while (!trees.empty()) {
        std::set<std::string> expected;
        for (const MadeTree& tree : takeTogether(&trees)) {
            build(tree);
            expected.insert(tree.findings.begin(), tree.findings.end());
        }
        const std::set<std::string> found = findings();
        EXPECT_EQ(std::vector<std::string>(), without(expected, found)) << "not found";
        EXPECT_EQ(std::vector<std::string>(), without(found, expected)) << "found, but is not there";
        clear();
    }
}

std::string testName(const ::testing::TestParamInfo<std::string>& info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Catalogue, MadeTreeTest, ::testing::ValuesIn(themes()), testName);

// A file that only has the product's name, and is not the product.
TEST_F(CatalogueTest, NamesAloneAreNotEnough) {
    for (const MadeTree& tree : readMadeTrees()) build(tree, true);
    EXPECT_EQ(std::set<std::string>(), findings());
}

TEST_F(CatalogueTest, TellsTheRunningKernel) {
    utsname kernel{};
    ASSERT_EQ(0, uname(&kernel));
    for (Match& match : scan(catalogueText()).matches) {
        if (match.name != kRunningKernel) continue;
        EXPECT_EQ(kernel.release, match.variables["release"]);
    }
}

TEST_F(CatalogueTest, EveryFileIsCheckedWithoutRemark) {
    for (const std::string& path : catalogueFiles()) {
        const ShellResult shown = shell(program() + " --check -i " + quoted(path) + " 2>&1");
        EXPECT_EQ(0, shown.status) << path;
        EXPECT_NE(shown.out.npos, shown.out.find(" invalid=0 warnings=0")) << shown.out;
    }
}

TEST_F(CatalogueTest, EveryProductHasAMadeTree) {
    std::set<std::string> trees;
    for (const MadeTree& tree : readMadeTrees()) trees.insert(tree.name);
    for (const CatalogueEntry& entry : readCatalogue()) {
        if (entry.name == kRunningKernel) continue;
        EXPECT_EQ(1U, trees.count(entry.name)) << entry.name;
    }
}

TEST_F(CatalogueTest, EveryPackageBelongsToASignature) {
    std::set<std::string> names;
    for (const CatalogueEntry& entry : readCatalogue()) names.insert(entry.name);
    std::ifstream table(ZUK_SOURCE_DIR "/signatures/debian-packages");
    std::size_t rows = 0;
    for (std::string line; std::getline(table, line);) {
        if (line[0] == '#') continue;
        ++rows;
        EXPECT_EQ(1U, names.count(line.substr(0, line.find(" | ")))) << line;
    }
    EXPECT_NE(0U, rows);
}

TEST_F(CatalogueTest, IdentifiersAndNamesAreUnique) {
    std::set<std::string> seen;
    for (const CatalogueEntry& entry : readCatalogue()) {
        EXPECT_TRUE(seen.insert(entry.guid).second) << entry.guid;
        EXPECT_TRUE(seen.insert(entry.name).second) << entry.name;
    }
}

bool has(const CatalogueEntry& entry, const std::string& variable) {
    return std::any_of(entry.variables.begin(), entry.variables.end(),
                       [&](const std::string& given) { return given.rfind(variable, 0) == 0; });
}

// A product, unlike a fact about the machine or a question about packages, lies somewhere.
bool isProduct(const CatalogueEntry& entry) {
    return !entry.perMachine && entry.name.find("OpenSSL 3") == std::string::npos;
}

TEST_F(CatalogueTest, EveryProductTellsVersionPlaceOwnerAndPublicName) {
    for (const CatalogueEntry& entry : readCatalogue()) {
        EXPECT_TRUE(has(entry, "version=")) << entry.name;
        if (!isProduct(entry)) continue;
        EXPECT_TRUE(has(entry, "path=" + entry.place)) << entry.name;
        EXPECT_TRUE(has(entry, "package=")) << entry.name;
        EXPECT_FALSE(entry.metadata.empty()) << entry.name;
    }
}

// RFC 4122, section 4.3: the name in the namespace that signatures/README.md gives.
std::string guidOf(const std::string& name) {
    constexpr std::array<unsigned char, 16> kNamespace = {0xc1, 0x98, 0x87, 0xd1, 0x50, 0xd3, 0x5f, 0xd0,
                                                          0x80, 0xf4, 0x07, 0x75, 0xdb, 0x98, 0x0c, 0x30};
    const std::string input(kNamespace.begin(), kNamespace.end());
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    EVP_Digest((input + name).data(), input.size() + name.size(), digest.data(), nullptr, EVP_sha1(),
               nullptr);
    digest[6] = static_cast<unsigned char>((digest[6] & 0x0FU) | 0x50U);
    digest[8] = static_cast<unsigned char>((digest[8] & 0x3FU) | 0x80U);
    std::string text;
    for (std::size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += "0123456789abcdef"[digest[i] >> 4U];
        text += "0123456789abcdef"[digest[i] & 15U];
    }
    return text;
}

TEST_F(CatalogueTest, EveryIdentifierIsGivenOrComesFromTheName) {
    std::set<std::string> given;
    std::ifstream file(ZUK_SOURCE_DIR "/signatures/given-guids");
    for (std::string guid, name; file >> guid && std::getline(file, name);) given.insert(guid + name);
    ASSERT_EQ(28U, given.size());
    for (const CatalogueEntry& entry : readCatalogue()) {
        if (given.count(entry.guid + " " + entry.name) != 0) continue;
        EXPECT_EQ(guidOf(entry.name), entry.guid);
    }
}

}  // namespace
