#include "frame/standard_output.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/log.h"
#include "platform/runtime.h"
#include "tests/support/log_recorder.h"
#include "tests/support/run_command.h"

namespace {

using namespace std::string_literals;

class TextStream final : public Stream {
  public:
    explicit TextStream(std::string text) : text_(std::move(text)) {}
    int read() override { return next_ < text_.size() ? static_cast<unsigned char>(text_[next_++]) : -1; }
    bool atEnd() const { return next_ == text_.size(); }

  private:
    std::string text_;
    std::size_t next_ = 0;
};

constexpr char kPlace[] = "ZUK_hw_run";

// What is logged of a stream's bytes.
LogRecorder logged(Stream& stream) {
    LogRecorder recorder;
    ZUKlog log(3, &LogRecorder::callback, &recorder);
    logStandardOutput(stream, &log, kPlace);
    return recorder;
}

TEST(StandardOutput, LogsEachLine) {
    const struct {
        std::string output;
        std::vector<std::string> texts;
    } cases[] = {
        {"", {}},
        {"a", {}},
        {"a\nb", {"STDOUT data: [a]"}},
        {"a\r\nb", {"STDOUT data: [a]"}},
        {"a\r\nb\n", {"STDOUT data: [a]", "STDOUT data: [b]"}},
        {"\n", {"STDOUT data: []"}},
        {"a\n\nb\n", {"STDOUT data: [a]", "STDOUT data: []", "STDOUT data: [b]"}},
        {"\ra\rb\r\n", {"STDOUT data: [ab]"}},  // a carriage return is dropped wherever it stands
        {"%s%n\xFF\n", {"STDOUT data: [%s%n\xFF]"}},
        {"a\0b\nc\n"s, {"STDOUT data: [a]", "STDOUT data: [c]"}},  // a message ends at a NUL
    };
    for (const auto& c : cases) {
        TextStream stream(c.output);
        EXPECT_EQ(c.texts, logged(stream).textsOf(kPlace)) << testing::PrintToString(c.output);
    }
}

TEST(StandardOutput, LogsAtTheHighestDetail) {
    TextStream stream("a\n");
    EXPECT_TRUE(logged(stream).has(ZUKlog::kMax, kPlace, "STDOUT data: [a]"));
}

TEST(StandardOutput, LogsALongLineWhole) {
    const std::string line(1000000, 'x');
    TextStream stream(line + "\n");
    EXPECT_EQ(std::vector<std::string>{"STDOUT data: [" + line + "]"}, logged(stream).textsOf(kPlace));
}

TEST(StandardOutput, ReadsToTheEndWithoutALog) {
    TextStream stream("a\nb");
    logStandardOutput(stream, nullptr, kPlace);
    EXPECT_TRUE(stream.atEnd());
}

TEST(StandardOutput, LogsWhatAChildWrites) {
    const auto process = start("/usr/bin/printf \"a\\r\\nb\\n\"");
    const std::vector<std::string> texts{"STDOUT data: [a]", "STDOUT data: [b]"};
    EXPECT_EQ(texts, logged(*process->standardOutput()).textsOf(kPlace));
}

}  // namespace
