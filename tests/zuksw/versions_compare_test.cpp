#include <algorithm>

#include "tests/zuksw/version_cases.h"

namespace zuksw {
namespace {

constexpr std::string_view kNames[] = {"generic", "deb",   "rpm", "apk",    "pacman", "semver",
                                       "pep440",  "maven", "gem", "number", "text",   "textnocase"};

TEST(Schemes, AreFoundByTheirName) {
    for (const std::string_view name : kNames) {
        const std::optional<Scheme> scheme = schemeByName(name);
        ASSERT_TRUE(scheme) << name;
        EXPECT_EQ(schemeName(*scheme), name);
    }
}

TEST(Schemes, AnUnknownNameIsNone) {
    EXPECT_EQ(schemeByName("Deb"), std::nullopt);
    EXPECT_EQ(schemeByName(""), std::nullopt);
}

// Enough pieces of every scheme that each accepts some of the texts.
std::vector<std::string> generatedTexts() {
    VersionMaker maker({"0",   "1",  "2",  "10",  "01",   ".",        ".",  "1.0",   "1.0.0", "-",
                        "_",   "~",  "^",  "+",   "a",    "b",        "rc", "-rc.1", "alpha", "-r1",
                        "_p1", "sp", "ga", "dev", "post", "snapshot", "1:", "K"});
    std::vector<std::string> texts = {"",     "0",     "1",          "1.0",    "1.0.0",
                                      "1.0a", "1.0-1", "1.0.0-rc.1", "1.10.0", "1.0.1-a+b"};
    while (texts.size() < 250) {
        texts.push_back(maker.make());
        texts.push_back(maker.alike(texts.back()));
    }
    return texts;
}

std::vector<std::string> acceptedBy(Scheme scheme) {
    std::vector<std::string> texts = generatedTexts();
    const auto refused = [&](const std::string& text) { return !compareVersions(scheme, text, text); };
    texts.erase(std::remove_if(texts.begin(), texts.end(), refused), texts.end());
    return texts;
}

TEST(Schemes, AVersionEqualsItself) {
    for (const std::string_view name : kNames) {
        const Scheme scheme = *schemeByName(name);
        for (const std::string& text : acceptedBy(scheme))
            EXPECT_EQ(compareVersions(scheme, text, text), 0) << name << " " << text;
    }
}

// What a scheme accepts alone it accepts beside everything else, and it puts all of it in one line.
// rpm and pacman are left out: where one side has no release they do not compare it, so 1-1 = 1 = 1-2.
TEST(Schemes, OrderIsTotal) {
    for (const std::string_view name : kNames) {
        if (name == "rpm" || name == "pacman") continue;
        const Scheme scheme = *schemeByName(name);
        std::vector<std::string> texts = acceptedBy(scheme);
        ASSERT_GE(texts.size(), 5U) << name;
        std::stable_sort(texts.begin(), texts.end(), [&](const std::string& a, const std::string& b) {
            return compareVersions(scheme, a, b).value_or(0) < 0;
        });
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t j = i + 1; j < texts.size(); ++j) {
                const int order = compareVersions(scheme, texts[i], texts[j]).value_or(9);
                EXPECT_LE(order, 0) << name << ": " << texts[i] << " and " << texts[j];
                EXPECT_EQ(compareVersions(scheme, texts[j], texts[i]).value_or(9), -order)
                    << name << ": " << texts[i] << " and " << texts[j];
            }
        }
    }
}

}  // namespace
}  // namespace zuksw
