#include "frame/log.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/support/log_recorder.h"
#include "tests/support/redirected_open.h"

namespace {

class LogTest : public testing::Test {
  protected:
    LogRecorder recorder;
    ZUKlog log{7, LogRecorder::callback, &recorder};
};

TEST_F(LogTest, TraceMinIsLevel0) {
    log.traceMIN("here", "text");
    ASSERT_EQ(1u, recorder.lines.size());
    EXPECT_EQ(0, recorder.lines[0].level);
}

TEST_F(LogTest, TraceMidIsLevel1) {
    log.traceMID("here", "text");
    ASSERT_EQ(1u, recorder.lines.size());
    EXPECT_EQ(1, recorder.lines[0].level);
}

TEST_F(LogTest, TraceMaxIsLevel2) {
    log.traceMAX("here", "text");
    ASSERT_EQ(1u, recorder.lines.size());
    EXPECT_EQ(2, recorder.lines[0].level);
}

TEST_F(LogTest, TraceHandsOnTheCallersLevel) {
    log.trace(-41, "here", "text");
    ASSERT_EQ(1u, recorder.lines.size());
    EXPECT_EQ(-41, recorder.lines[0].level);
}

TEST_F(LogTest, CallbackIsToldTheLoggersOwnLevel) {
    log.traceMAX("here", "text");
    ASSERT_EQ(1u, recorder.lines.size());
    EXPECT_EQ(7, recorder.lines[0].loggerLevel);
}

TEST_F(LogTest, LevelsAboveTheLoggersOwnAreDeliveredToo) {
    log.trace(8, "here", "text");
    EXPECT_EQ(1u, recorder.lines.size());
}

TEST_F(LogTest, CallbackGetsTheLocation) {
    log.traceMAX("TemporaryDir::init()", "text");
    ASSERT_EQ(1u, recorder.lines.size());
    EXPECT_EQ("TemporaryDir::init()", recorder.lines[0].location);
}

TEST_F(LogTest, FormatsNarrowAndWideText) {
    log.traceMAX("here", "[%s] [%S] %d", "narrow", L"wide", 42);
    EXPECT_TRUE(recorder.has(2, "here", "[narrow] [wide] 42"));
}

TEST_F(LogTest, EmptyMessageIsNotDelivered) {
    log.traceMIN("here", "%s", "");
    EXPECT_TRUE(recorder.lines.empty());
}

TEST_F(LogTest, NullFormatIsNotDelivered) {
    log.traceMIN("here", nullptr);
    EXPECT_TRUE(recorder.lines.empty());
}

TEST_F(LogTest, WideTextThatTheLocaleCannotConvertIsNotDelivered) {
    log.traceMIN("here", "[%S]", L"\u20ac");
    EXPECT_TRUE(recorder.lines.empty());
}

TEST_F(LogTest, NextMessageAfterADroppedOneIsDelivered) {
    log.traceMIN("here", "[%S]", L"\u20ac");
    log.traceMIN("here", "next");
    EXPECT_TRUE(recorder.has(0, "here", "next"));
}

TEST_F(LogTest, MessageOfAMegabyteIsDeliveredWhole) {
    const std::string text(1 << 20, 'x');
    log.traceMIN("here", "%s", text.c_str());
    EXPECT_TRUE(recorder.has(0, "here", text));
}

TEST_F(LogTest, NothingIsDeliveredWithoutTheNullDevice) {
    const RedirectedOpen missing("/dev/null", "");
    log.traceMIN("here", "text");
    EXPECT_TRUE(recorder.lines.empty());
}

TEST(Log, NullCallbackDoesNothing) {
    ZUKlog log(1, nullptr, nullptr);
    const RedirectedOpen watched("/dev/null", "/dev/null");
    log.traceMIN("here", "text");
    EXPECT_EQ(0, watched.opened());
}

TEST(Log, UserDataIsHandedBackUntouched) {
    void* seen = nullptr;
    void* const data = &seen;
    ZUKlog log(
        1,
        [](int, int, void* userData, const char*, const char*) { *static_cast<void**>(userData) = userData; },
        data);
    log.traceMIN("here", "text");
    EXPECT_EQ(data, seen);
}

TEST(Log, IsDeletedThroughItsVirtualDestructor) {
    struct Derived : ZUKlog {
        explicit Derived(bool* flag) : ZUKlog(1, nullptr, nullptr), gone(flag) {}
        ~Derived() override { *gone = true; }
        bool* gone;
    };
    bool gone = false;
    const ZUKlog* log = new Derived(&gone);
    delete log;
    EXPECT_TRUE(gone);
}

TEST(Log, LockIsFreeAgainAfterACallbackThrew) {
    ZUKlog log(
        1, [](int, int, void*, const char*, const char*) { throw 1; }, nullptr);
    EXPECT_ANY_THROW(log.traceMIN("here", "text"));
    LogRecorder recorder;
    ZUKlog(1, LogRecorder::callback, &recorder).traceMIN("here", "next");
    EXPECT_EQ(1u, recorder.lines.size());
}

TEST(LogThreads, MessagesOfAllLoggersComeOneAtATime) {
    LogRecorder shared;  // not safe for threads: only the loggers' lock protects it
    constexpr int kThreads = 4;
    constexpr int kMessages = 200;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&shared] {
            ZUKlog log(1, LogRecorder::callback, &shared);
            for (int k = 0; k < kMessages; ++k) log.traceMIN("here", "message %d", k);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(static_cast<std::size_t>(kThreads * kMessages), shared.lines.size());
}

}  // namespace
