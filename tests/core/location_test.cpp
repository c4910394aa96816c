#include "frame/location.h"

#include <gtest/gtest.h>

#include <string>

#include "frame/log.h"
#include "tests/support/log_recorder.h"
#include "tests/support/redirected_open.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr char kFile[] = "/etc/zuk/zuk.ini";
constexpr char kConstructor[] = "ZUKLocation::ZUKLocation()";
constexpr char kSearch[] = "ZUKLocation::getSystemLocation()";

class LocationTest : public testing::Test {
  protected:
    // What a machine with this installation file resolves to.
    std::wstring resolve(const std::string& content, const wchar_t* homeDir) {
        const RedirectedOpen file(kFile, folder.file("zuk.ini", content));
        return ZUKlocation(&log, "product", homeDir).getLocation();
    }
    std::wstring resolveWithoutFile(const wchar_t* homeDir) {
        const RedirectedOpen file(kFile, "");
        return ZUKlocation(&log, "product", homeDir).getLocation();
    }

    TemporaryFolder folder;
    LogRecorder recorder;
    ZUKlog log{1, LogRecorder::callback, &recorder};
};

struct FileCase {
    const char* about;
    std::string content;
    std::wstring location;
};

TEST_F(LocationTest, InstallationFile) {
    const FileCase kCases[] = {
        {"blank after the sign", "ZUK_HomeDirectory = /opt/zuk\n", L"/opt/zuk/bin"},
        {"no blank after the sign", "ZUK_HomeDirectory =/opt/zuk\n", L"/opt/zuk/bin"},
        {"second blank is kept", "ZUK_HomeDirectory =  /opt/zuk\n", L" /opt/zuk/bin"},
        {"trailing separator collapses", "ZUK_HomeDirectory = /opt/zuk/\n", L"/opt/zuk/bin"},
        {"trailing blank is kept", "ZUK_HomeDirectory = /opt/zuk \n", L"/opt/zuk /bin"},
        {"carriage return is kept", "ZUK_HomeDirectory = /opt/zuk\r\n", L"/opt/zuk\r/bin"},
        {"no line end", "ZUK_HomeDirectory = /opt/zuk", L"/opt/zuk/bin"},
        {"other case", "zuk_homedirectory = /opt/zuk\n", L""},
        {"no blank before the sign", "ZUK_HomeDirectory= /opt/zuk\n", L""},
        {"not at the start of a line", " ZUK_HomeDirectory = /opt/zuk\n", L""},
        {"other lines", "# installation\nOther = 1\nZUK_HomeDirectory = /a\nLast = 2\n", L"/a/bin"},
        {"last occurrence wins", "ZUK_HomeDirectory = /a\nZUK_HomeDirectory = /b\n", L"/b/bin"},
        {"empty value", "ZUK_HomeDirectory =\n", L"/bin"},
        {"empty file", "", L""},
        {"byte above 127 is sign-extended", "ZUK_HomeDirectory = /\xe9\n",
         std::wstring(L"/") + wchar_t(-23) + L"/bin"},
        // 1023 characters fill the line buffer: the key right after them starts a piece of its own.
        {"piece of a long line", std::string(1023, 'x') + "ZUK_HomeDirectory = /opt\n", L"/opt/bin"},
        {"one character less and it does not", std::string(1022, 'x') + "ZUK_HomeDirectory = /opt\n", L""},
    };
    for (const FileCase& c : kCases) EXPECT_EQ(c.location, resolve(c.content, nullptr)) << c.about;
}

TEST_F(LocationTest, FileLocationIsNotNormalisedBeforeTheConstructorDoes) {
    const RedirectedOpen file(kFile, folder.file("zuk.ini", "ZUK_HomeDirectory = /opt/zuk/\n"));
    ZUKlocation location(nullptr, "product", nullptr);
    EXPECT_EQ(L"/opt/zuk//bin", location.getSystemLocation("product"));
}

TEST_F(LocationTest, GivenDirectoryWinsAndIsNormalised) {
    EXPECT_EQ(L"/a/b/c", resolve("ZUK_HomeDirectory = /opt/zuk\n", L"/a//b///c"));
}

TEST_F(LocationTest, GivenDirectoryKeepsItsTrailingSeparator) {
    EXPECT_EQ(L"/a/b/", resolveWithoutFile(L"/a/b/"));
}

TEST_F(LocationTest, GivenDirectoryMayBeRelative) {
    EXPECT_EQ(L"bin", resolveWithoutFile(L"bin"));
}

TEST_F(LocationTest, DifferenceIsLoggedWithTheDirectoryAsGiven) {
    resolve("ZUK_HomeDirectory = /opt/zuk\n", L"/a//b");
    EXPECT_TRUE(recorder.has(1, kConstructor,
                             "Default location [/opt/zuk/bin] is different that specified one [/a//b]"));
}

TEST_F(LocationTest, MissingFileCountsAsDifferent) {
    resolveWithoutFile(L"/a");
    EXPECT_TRUE(recorder.has(1, kConstructor, "Default location [] is different that specified one [/a]"));
}

TEST_F(LocationTest, FileLocationIsComparedUnnormalised) {
    resolve("ZUK_HomeDirectory = /opt/zuk/\n", L"/opt/zuk/bin");
    EXPECT_TRUE(recorder.has(
        1, kConstructor, "Default location [/opt/zuk//bin] is different that specified one [/opt/zuk/bin]"));
}

TEST_F(LocationTest, EqualDirectoriesLogNoDifference) {
    resolve("ZUK_HomeDirectory = /opt/zuk\n", L"/opt//zuk/bin");
    for (const LogLine& line : recorder.lines) EXPECT_NE(1, line.level) << line;
}

TEST_F(LocationTest, NoGivenDirectoryLogsNoDifference) {
    resolve("ZUK_HomeDirectory = /opt/zuk\n", nullptr);
    for (const LogLine& line : recorder.lines) EXPECT_NE(1, line.level) << line;
}

TEST_F(LocationTest, LogsTheSearchAndItsOutcomeInOrder) {
    resolve("ZUK_HomeDirectory = /opt/zuk\n", nullptr);
    ASSERT_EQ(3u, recorder.lines.size());
    EXPECT_TRUE(recorder.has(2, kSearch, "Checking ZUK location.."));
    EXPECT_TRUE(recorder.has(2, kSearch, "Opening a file [/etc/zuk/zuk.ini]"));
    EXPECT_TRUE(recorder.has(2, kConstructor, "ZUK location [/opt/zuk/bin]"));
    EXPECT_EQ("Checking ZUK location..", recorder.lines[0].text);
    EXPECT_EQ("ZUK location [/opt/zuk/bin]", recorder.lines[2].text);
}

TEST_F(LocationTest, MissingFileIsAnErrorLineAfterTheOpeningLine) {
    resolveWithoutFile(nullptr);
    ASSERT_EQ(4u, recorder.lines.size());
    EXPECT_EQ("Opening a file [/etc/zuk/zuk.ini]", recorder.lines[1].text);
    EXPECT_EQ("Can't open file [/etc/zuk/zuk.ini]", recorder.lines[2].text);
    EXPECT_EQ(0, recorder.lines[2].level);
    EXPECT_EQ("ZUKLocation::getSystemLocation", recorder.lines[2].location);
}

TEST_F(LocationTest, FileWithoutTheKeyIsNoError) {
    resolve("Other = 1\n", nullptr);
    for (const LogLine& line : recorder.lines) EXPECT_EQ(2, line.level) << line;
}

TEST_F(LocationTest, WorksWithoutALogger) {
    const RedirectedOpen file(kFile, "");
    EXPECT_EQ(L"/a", ZUKlocation(nullptr, "product", L"//a").getLocation());
}

TEST_F(LocationTest, SeparatorIsASlash) {
    const RedirectedOpen file(kFile, "");
    EXPECT_EQ(L"/", ZUKlocation(nullptr, "product", nullptr).getDirectorySeparator());
}

}  // namespace
