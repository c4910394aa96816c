// The same answer whoever asks, in whatever order, on however many threads.

#include <algorithm>
#include <numeric>

#include "tests/zuksw/scan_fixture.h"

namespace {

class DeterminismTest : public ScanTest {
  protected:
    DeterminismTest() {
        for (int i = 0; i < 30; ++i) {
            const std::string at = std::to_string(i);
            file("/d" + std::to_string(i % 7) + "/f" + at, "v" + std::to_string(i % 5) + "\nw" + at,
                 i % 3 == 0 ? 0755 : 0644);
        }
        file("/secret", "v9");
    }

    // Detect of signature `number`, its conditions in one of several orders.
    static std::string conditions(int number, unsigned order) {
        std::vector<std::string> parts = {
            "<File as=\"f\" name=\"{f*,secret}\"/>",
            "<Content of=\"f\" match=\"v(?P&lt;v&gt;\\d)\"/>",
            "<Any><Content of=\"f\" match=\"w(?P&lt;w&gt;\\d+)\"/><Set name=\"w\" value=\"none\"/></Any>",
            "<Not><Test value=\"${v}\" eq=\"" + std::to_string(number % 5) + "\"/></Not>",
            "<Set name=\"p\" value=\"${f.path} ${v} ${w}\"/>",
            "<AtLeast count=\"1\"><File near=\"f\" path=\"f" + std::to_string(number) +
                "\"/>"
                "<Test value=\"${f.mode}\" eq=\"0755\" scheme=\"text\"/></AtLeast>",
        };
        for (; order > 0; --order) std::next_permutation(parts.begin(), parts.end());
        return std::accumulate(parts.begin(), parts.end(), std::string());
    }
    static std::string one(int number, unsigned order) {
        const std::string guid = "g" + std::to_string(number);
        std::string matched;
        if (number > 0) matched = "<Matched guid=\"g" + std::to_string(number - 1) + "\"/>";
        return "<Signature guid=\"" + guid + "\" name=\"" + guid + "\" place=\"${p}\"><Detect>" + matched +
               conditions(number, order) +
               "</Detect><Report><Variable name=\"p\" value=\"${p}\"/></Report></Signature>";
    }
    static std::string all(unsigned order) {
        std::vector<int> numbers(10);
        std::iota(numbers.begin(), numbers.end(), 0);
        for (unsigned i = 0; i < order; ++i) std::next_permutation(numbers.begin(), numbers.end());
        std::string text;
        for (const int number : numbers) text += one(number, order);
        return text;
    }
    static std::vector<std::string> findings(const ScanResult& result) {
        std::vector<std::string> lines;
        for (const Match& match : result.matches) lines.push_back(match.guid + " " + match.variables.at("p"));
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    static Settings threads(int count) {
        return {{"limits/Threads", std::to_string(count)}, {"content/Deny", "/secret"}};
    }
};

TEST_F(DeterminismTest, OneAndManyThreadsWriteTheSameFiles) {
    const ScanResult first = scan(all(0), threads(1));
    EXPECT_GT(first.matches.size(), 50U) << first.warnings;
    for (const int count : {1, 2, 7, 32}) {
        const ScanResult again = scan(all(0), threads(count));
        EXPECT_EQ(first.output, again.output) << count;
        EXPECT_EQ(first.warnings, again.warnings) << count;
    }
}

TEST_F(DeterminismTest, TheOrderOfSignaturesAndConditionsChangesNoFinding) {
    const std::vector<std::string> first = findings(scan(all(0), threads(1)));
    for (const unsigned order : {1U, 77U, 345U, 719U}) {
        EXPECT_EQ(first, findings(scan(all(order), threads(2)))) << order;
    }
}

TEST_F(DeterminismTest, TheOrderInDirectoriesChangesNothing) {
    const ScanResult first = scan(all(0), threads(2));
    for (int i = 29; i >= 0; --i) {  // made anew, they stand elsewhere in their directories
        const std::string path = treePath("/d" + std::to_string(i % 7) + "/f" + std::to_string(i));
        std::filesystem::rename(path, path + "~");
        std::filesystem::rename(path + "~", path);
    }
    EXPECT_EQ(first.output, scan(all(0), threads(2)).output);
}

TEST_F(DeterminismTest, EventsBeyondTheLimitAreTheSameOnAnyNumberOfThreads) {
    for (int i = 0; i < 300; ++i) file("/bad/" + std::to_string(i) + ".json", "{" + std::to_string(i));
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += "<Signature guid=\"e" + std::to_string(i) + "\" name=\"n\"><Detect><Test value=\"" +
                std::to_string(i) + "x!\" eq=\"1\" scheme=\"pep440\"/></Detect></Signature>";
    }
    const auto run = [&](const char* count) {
        return scan(text + signature("<File as=\"f\" name=\"secret\"/><Content of=\"f\" match=\"x\"/>"),
                    {{"limits/Threads", count}, {"limits/MaxEvents", "20"}, {"content/Deny", "/secret"}});
    };
    const ScanResult first = run("1");
    EXPECT_TRUE(first.has("more-events")) << first.warnings;
    EXPECT_TRUE(first.has("undecided")) << first.warnings;  // what sums up the scan is always told
    EXPECT_EQ(first.warnings, run("8").warnings);
}

}  // namespace
