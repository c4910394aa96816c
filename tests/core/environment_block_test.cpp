#include "frame/environment_block.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <vector>

#include "platform/runtime.h"
#include "tests/support/run_command.h"

namespace {

using namespace std::string_literals;

// Puts the entries in the place of this process's environment until destroyed.
class Environment {
  public:
    explicit Environment(std::vector<std::string> entries)
        : previous_(environ), entries_(std::move(entries)) {
        for (std::string& entry : entries_) pointers_.push_back(entry.data());
        pointers_.push_back(nullptr);
        environ = pointers_.data();
    }
    ~Environment() { environ = previous_; }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

  private:
    char** previous_;
    std::vector<std::string> entries_;
    std::vector<char*> pointers_;
};

struct Case {
    std::vector<std::string> entries;
    std::string block;
};

const Case kCases[] = {
    {{}, "LD_LIBRARY_PATH=/h\0\0\0"s},
    {{"A=1", "B="}, "A=1\0B=\0LD_LIBRARY_PATH=/h\0\0\0"s},
    {{"A=1", "LD_LIBRARY_PATH=/a", "B=2"}, "A=1\0LD_LIBRARY_PATH=/h:/a\0B=2\0\0\0\0"s},
    {{"LD_LIBRARY_PATH="}, "LD_LIBRARY_PATH=/h:\0\0\0\0"s},
    {{"LD_LIBRARY_PATH=/a", "LD_LIBRARY_PATH=/b"},  // each one
     "LD_LIBRARY_PATH=/h:/a\0LD_LIBRARY_PATH=/h:/b\0\0\0\0"s},
    {{"A=1", "", "B=2"}, "A=1\0B=2\0LD_LIBRARY_PATH=/h\0\0\0"s},          // an empty one would end the block
    {{"LD_LIBRARY_PATH"}, "LD_LIBRARY_PATH\0LD_LIBRARY_PATH=/h\0\0\0"s},  // not an assignment
    {{"LD_LIBRARY_PATH2=/a"}, "LD_LIBRARY_PATH2=/a\0LD_LIBRARY_PATH=/h\0\0\0"s},
    {{"ld_library_path=/a"}, "ld_library_path=/a\0LD_LIBRARY_PATH=/h\0\0\0"s},
    {{"MY_LD_LIBRARY_PATH=/a"}, "MY_LD_LIBRARY_PATH=/a\0LD_LIBRARY_PATH=/h\0\0\0"s},
};

TEST(EnvironmentBlock, PutsTheHomeDirectoryIntoTheLibraryPath) {
    for (const Case& c : kCases) {
        const Environment environment(c.entries);
        EXPECT_EQ(c.block, buildEnvironment(L"/h")) << testing::PrintToString(c.entries);
    }
}

TEST(EnvironmentBlock, AClearedEnvironmentIsAnEmptyOne) {
    char** const previous = environ;
    environ = nullptr;
    const std::string block = buildEnvironment(L"/h");
    environ = previous;
    EXPECT_EQ("LD_LIBRARY_PATH=/h\0\0\0"s, block);
}

TEST(EnvironmentBlock, NarrowsTheHomeDirectoryToLowBytes) {
    const Environment environment({"LD_LIBRARY_PATH=/a"});
    EXPECT_EQ("LD_LIBRARY_PATH=/\xE4\x41:/a\0\0\0\0"s, buildEnvironment(L"/\u00E4\u0141"));
}

TEST(EnvironmentBlock, IsWhatTheChildSees) {
    const struct {
        std::vector<std::string> entries;
        std::string seen;
    } cases[] = {
        {{}, "LD_LIBRARY_PATH=/h\n"},
        {{"A=1"}, "A=1\nLD_LIBRARY_PATH=/h\n"},
        {{"LD_LIBRARY_PATH=/a", "B=2"}, "LD_LIBRARY_PATH=/h:/a\nB=2\n"},
        {{"B=2", "LD_LIBRARY_PATH=/a"}, "B=2\nLD_LIBRARY_PATH=/h:/a\n"},
    };
    for (const auto& c : cases) {
        const Environment environment(c.entries);
        const std::string block = buildEnvironment(L"/h");
        const std::unique_ptr<Process> process(Runtime().execute(L"/usr/bin/env", block.c_str()));
        EXPECT_EQ(c.seen, readAll(*process->standardOutput()));
    }
}

}  // namespace
