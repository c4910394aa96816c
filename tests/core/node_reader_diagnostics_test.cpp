// What the reader says about files and documents that are not as they should be.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <exception>

#include "tests/support/reading.h"

namespace {
struct BrokenCase {
    const char* name;
    std::string_view document;
    int line;
    const wchar_t* message;
};

const BrokenCase kBrokenCases[] = {
    {"empty file", "", 1, L"no element found"},
    {"white space only", "\n\n", 3, L"no element found"},
    {"no markup", "text", 1, L"syntax error"},
    {"cut off in content", "<r>\n<a>", 2, L"no element found"},
    {"cut off in a tag", "<r>\n<a", 2, L"unclosed token"},
    {"wrong end tag", "<r>\n<a>\n</r>", 3, L"mismatched tag"},
    {"two document elements", "<r/>\n<r/>", 2, L"junk after document element"},
    {"attribute given twice", "<r a='1' a='2'/>", 1, L"duplicate attribute"},
    {"undefined entity", "<r>&e;</r>", 1, L"undefined entity"},
    {"control character", "<r>\x01</r>", 1, L"not well-formed (invalid token)"},
    {"bytes that are no UTF-8", "<r>\xFF</r>", 1, L"not well-formed (invalid token)"},
    {"unknown encoding", "<?xml version='1.0' encoding='EBCDIC'?><r/>", 1, L"unknown encoding"},
    {"reference to itself", "<!DOCTYPE r [<!ENTITY e '&e;'>]><r>&e;</r>", 1, L"recursive entity reference"},
};

TEST(NodeReaderDiagnostics, ReportsABrokenDocumentOnceWithItsLine) {
    for (const BrokenCase& c : kBrokenCases) {
        SCOPED_TRACE(c.name);
        const Reading reading(c.document);
        EXPECT_NE(0, reading.status);
        EXPECT_EQ(1, reading.errorCount);
        EXPECT_EQ(0, reading.sink.trees);
        ASSERT_EQ(1u, reading.sink.diagnostics.size());
        EXPECT_EQ("error", reading.sink.diagnostics[0].kind);
        EXPECT_EQ(c.line, reading.sink.diagnostics[0].line);
        EXPECT_EQ(c.message, reading.sink.diagnostics[0].message);
    }
}

class UnreadableFileTest : public testing::Test {
  protected:
    // What the reader says about a path that must give one critical error in line 0.
    std::wstring criticalError(const std::string& path) {
        RecordingSink sink;
        NodeReader reader(sink);
        EXPECT_NE(0, reader.process(String(widen(path).c_str()), 0));
        EXPECT_EQ(1, reader.errorCount);
        EXPECT_EQ(0, sink.trees);
        if (sink.diagnostics.size() != 1) return L"not one diagnostic";
        EXPECT_EQ("critical", sink.diagnostics[0].kind);
        EXPECT_EQ(0, sink.diagnostics[0].line);
        return sink.diagnostics[0].message;
    }

    TemporaryFolder folder_;
};

TEST_F(UnreadableFileTest, NamesAMissingFileAndTheReason) {
    const std::string path = folder_.path() + "/missing.xml";
    EXPECT_EQ(L"cannot read " + widen(path) + L": No such file or directory", criticalError(path));
}

TEST_F(UnreadableFileTest, RefusesADirectory) {
    EXPECT_EQ(L"cannot read " + widen(folder_.path()) + L": not a regular file",
              criticalError(folder_.path()));
}

TEST_F(UnreadableFileTest, RefusesADevice) {
    EXPECT_EQ(L"cannot read /dev/zero: not a regular file", criticalError("/dev/zero"));
}

TEST_F(UnreadableFileTest, RefusesAFifoWithoutWaitingForAWriter) {
    const std::string path = folder_.path() + "/fifo";
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    EXPECT_EQ(L"cannot read " + widen(path) + L": not a regular file", criticalError(path));
}

TEST_F(UnreadableFileTest, ReportsAFileThatOpensButCannotBeRead) {
    EXPECT_EQ(L"cannot read /proc/self/mem: Input/output error", criticalError("/proc/self/mem"));
}

TEST_F(UnreadableFileTest, WritesItsMessagesInAscii) {
    EXPECT_EQ(L"cannot read /missing/?.xml: No such file or directory", criticalError("/missing/\xE9.xml"));
}

TEST(NodeReaderDiagnostics, WarnsOfAnExternalEntityAndNeverReadsIt) {
    const TemporaryFolder folder;
    const std::string secret = folder.file("secret", "secret");
    const Reading reading("<!DOCTYPE r [<!ENTITY e SYSTEM '" + secret + "'>]>\n<r>a&e;b</r>");
    EXPECT_EQ(0, reading.errorCount);
    ASSERT_EQ(1u, reading.sink.diagnostics.size());
    EXPECT_EQ("warning", reading.sink.diagnostics[0].kind);
    EXPECT_EQ(2, reading.sink.diagnostics[0].line);
    EXPECT_EQ(L"external entity skipped: " + widen(secret), reading.sink.diagnostics[0].message);
    EXPECT_EQ("<r>ab</r>", written(*reading.root()));
}

TEST(NodeReaderDiagnostics, NeverReadsAnExternalDocumentType) {
    const TemporaryFolder folder;
    const std::string dtd = folder.file("external.dtd", "<!ENTITY e 'from outside'>");
    const Reading reading("<!DOCTYPE r SYSTEM '" + dtd + "'>\n<r>&e;</r>");
    EXPECT_EQ(0, reading.errorCount);
    ASSERT_EQ(1u, reading.sink.diagnostics.size());
    EXPECT_EQ(L"entity skipped: e", reading.sink.diagnostics[0].message);
    EXPECT_EQ("<r/>", written(*reading.root()));
}

TEST(NodeReaderDiagnostics, NeverReadsAnExternalParameterEntity) {
    const TemporaryFolder folder;
    const std::string dtd = folder.file("external.dtd", "<!ENTITY e 'from outside'>");
    const Reading reading("<!DOCTYPE r [<!ENTITY % p SYSTEM '" + dtd + "'>%p;]>\n<r>&e;</r>");
    EXPECT_EQ("<r/>", written(*reading.root()));
}

// A sink that fails when it is warned.
template <class Exception>
class ThrowingSink : public RecordingSink {
  public:
    int onWarning(const String&, int) override { throw Exception(); }
};
struct SinkFailure : std::exception {};
constexpr char kWarned[] = "<!DOCTYPE r SYSTEM 'none.dtd'><r>&e;<a/></r>";

TEST(NodeReaderDiagnostics, ReportsThatMemoryRanOutDuringTheParse) {
    const TemporaryFolder folder;
    const std::wstring path = widen(folder.file("document.xml", kWarned));
    ThrowingSink<std::bad_alloc> sink;
    NodeReader reader(sink);
    EXPECT_NE(0, reader.process(String(path.c_str()), 0));
    EXPECT_EQ(1, reader.errorCount);
    EXPECT_EQ(0, sink.trees);
    ASSERT_EQ(1u, sink.diagnostics.size());
    EXPECT_EQ("critical", sink.diagnostics[0].kind);
    EXPECT_EQ(L"cannot read " + path + L": out of memory", sink.diagnostics[0].message);
}

TEST(NodeReaderDiagnostics, LetsTheSinksOwnExceptionsThrough) {
    const TemporaryFolder folder;
    const std::wstring path = widen(folder.file("document.xml", kWarned));
    ThrowingSink<SinkFailure> sink;
    NodeReader reader(sink);
    EXPECT_THROW(reader.process(String(path.c_str()), 0), SinkFailure);
}
}  // namespace
