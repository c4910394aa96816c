#include "frame/temporary_dir.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "frame/log.h"
#include "frame/narrow.h"
#include "tests/support/environment.h"
#include "tests/support/log_recorder.h"
#include "tests/support/redirected_open.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr char kInit[] = "TemporaryDir::init()";

bool exists(const std::wstring& path) {
    return access(narrow(path).c_str(), F_OK) == 0;
}

class TemporaryDirTest : public testing::Test {
  protected:
    std::wstring base() const { return widen(folder.path()); }

    TemporaryFolder folder;
    LogRecorder recorder;
    ZUKlog log{1, LogRecorder::callback, &recorder};
};

struct BaseCase {
    const char* temp;
    const char* tmp;
    const wchar_t* base;
};

TEST_F(TemporaryDirTest, BaseComesFromTheEnvironment) {
    const BaseCase kCases[] = {
        {nullptr, nullptr, L"/tmp"},
        {"/var/tmp//x", nullptr, L"/var/tmp/x"},
        {nullptr, "/var/tmp", L"/var/tmp"},
        {"/a", "/b", L"/a"},
        {"", "/b", L""},  // set but empty counts as set
        {nullptr, "", L""},
    };
    for (const BaseCase& c : kCases) {
        const EnvironmentVariable temp("TEMP", c.temp);
        const EnvironmentVariable tmp("TMP", c.tmp);
        const TemporaryDir dir(nullptr, nullptr);
        EXPECT_EQ(c.base, dir.basePath);
    }
}

TEST_F(TemporaryDirTest, SystemPathIsLogged) {
    const EnvironmentVariable temp("TEMP", "/a//b");
    const TemporaryDir dir(&log, nullptr);
    EXPECT_TRUE(recorder.has(2, "TemporaryDir::getSystemTempPath()", "Requesting system TMP path [/a//b]"));
}

TEST_F(TemporaryDirTest, GivenBaseIsNormalisedAndLogged) {
    const TemporaryDir dir(&log, L"/a///b/");
    EXPECT_TRUE(recorder.has(2, "TemporaryDir::TemporaryDir()", "BasePath [/a/b/]"));
}

TEST_F(TemporaryDirTest, GivenBaseWinsOverTheEnvironment) {
    const EnvironmentVariable temp("TEMP", "/other");
    EXPECT_EQ(L"/given", TemporaryDir(nullptr, L"/given").basePath);
}

TEST_F(TemporaryDirTest, InitCreatesTheDirectoryForItsOwnerOnly) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    struct stat status = {};
    ASSERT_EQ(0, stat(narrow(dir.getBasePath()).c_str(), &status));
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(0u, status.st_mode & (S_IRWXG | S_IRWXO));
}

TEST_F(TemporaryDirTest, NameIsPrefixProcessParentRandomAndAttempt) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    const std::string name = narrow(dir.getBasePath()).substr(folder.path().size() + 1);
    const std::string head = "zuk_" + std::to_string(getpid()) + std::to_string(getppid());
    ASSERT_EQ(head, name.substr(0, head.size()));
    const std::size_t mark = name.rfind('_');
    const std::size_t random = mark - head.size();
    EXPECT_TRUE(6 <= random && random <= 10) << name;
    const int attempt = std::stoi(name.substr(mark + 1));
    EXPECT_TRUE(30 <= attempt && attempt <= 59) << name;
}

TEST_F(TemporaryDirTest, InitLogsItsSteps) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    const std::string path = narrow(dir.getBasePath());
    const std::vector<std::string> expected = {"initialization", "Creating directory [" + path + "] success",
                                               "initialization successful [" + path + "]"};
    EXPECT_EQ(expected, recorder.textsOf(kInit));
}

TEST_F(TemporaryDirTest, MissingBaseFailsWith6) {
    TemporaryDir dir(&log, (base() + L"/missing").c_str());
    EXPECT_EQ(6, dir.init(L"zuk_"));
}

TEST_F(TemporaryDirTest, MissingBaseIsTried30To59Times) {
    TemporaryDir dir(&log, (base() + L"/missing").c_str());
    dir.init(L"zuk_");
    const std::vector<std::string> texts = recorder.textsOf(kInit);
    const auto failures = std::count_if(texts.begin(), texts.end(), [](const std::string& text) {
        return text.rfind("Creating directory [", 0) == 0 && text.substr(text.size() - 8) == "] failed";
    });
    EXPECT_TRUE(30 <= failures && failures <= 59) << failures;
    EXPECT_EQ("initialization failed [" + narrow(dir.dirPath) + "]", texts.back());
}

TEST_F(TemporaryDirTest, BasePathIsNullBeforeInit) {
    TemporaryDir dir(&log, base().c_str());
    EXPECT_EQ(nullptr, dir.getBasePath());
}

TEST_F(TemporaryDirTest, BasePathIsTheLastPathTriedAfterAFailedInit) {
    TemporaryDir dir(&log, (base() + L"/missing").c_str());
    dir.init(L"zuk_");
    EXPECT_EQ(dir.dirPath, dir.getBasePath());
}

TEST_F(TemporaryDirTest, FileNamesBeforeInitFailWith6) {
    TemporaryDir dir(&log, base().c_str());
    std::wstring name = L"as it was";
    EXPECT_EQ(6, dir.getTmpFile(name, L"config", L".xml"));
    EXPECT_EQ(L"as it was", name);
}

TEST_F(TemporaryDirTest, FileNameHasTheAttemptBehindTheExtension) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    std::wstring name;
    ASSERT_EQ(0, dir.getTmpFile(name, L"config", L".xml"));
    const std::wstring head = std::wstring(dir.getBasePath()) + L"/config" + std::to_wstring(getpid());
    EXPECT_EQ(head, name.substr(0, head.size()));
    EXPECT_NE(std::wstring::npos, name.find(L".xml_"));
}

TEST_F(TemporaryDirTest, FileNameIsLogged) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    std::wstring name;
    dir.getTmpFile(name, L"config", L".xml");
    EXPECT_TRUE(recorder.has(2, "TemporaryDir::getTmpFile()", "Requesting tmpFile [" + narrow(name) + "]"));
}

TEST_F(TemporaryDirTest, FileItselfIsNotCreated) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    std::wstring name;
    dir.getTmpFile(name, L"config", L".xml");
    EXPECT_FALSE(exists(name));
}

TEST_F(TemporaryDirTest, FileNamesDifferAndAreRemembered) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    std::wstring first;
    std::wstring second;
    dir.getTmpFile(first, L"config", L".xml");
    dir.getTmpFile(second, L"config", L".xml");
    EXPECT_NE(first, second);
    EXPECT_EQ((std::list<std::wstring>{first, second}), dir.files);
}

TEST_F(TemporaryDirTest, DeleteFilesRemovesAndForgetsThem) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    std::wstring name;
    dir.getTmpFile(name, L"config", L".xml");
    std::ofstream(narrow(name)) << "x";
    EXPECT_EQ(0, dir.deleteFiles(true));
    EXPECT_FALSE(exists(name));
    EXPECT_TRUE(dir.files.empty());
}

TEST_F(TemporaryDirTest, DeleteFilesIgnoresFilesThatAreNotThere) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    std::wstring name;
    dir.getTmpFile(name, L"config", L".xml");
    EXPECT_EQ(0, dir.deleteFiles(false));
}

TEST_F(TemporaryDirTest, DeleteFilesWithoutFilesSucceeds) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    EXPECT_EQ(0, dir.deleteFiles(true));
}

TEST_F(TemporaryDirTest, DeleteFilesBeforeInitFailsWith6) {
    TemporaryDir dir(&log, base().c_str());
    EXPECT_EQ(6, dir.deleteFiles(true));
}

TEST_F(TemporaryDirTest, DeleteDirectoryTakesNoNoticeOfItsArgument) {
    TemporaryDir dir(&log, base().c_str());
    ASSERT_EQ(0, dir.init(L"zuk_"));
    const std::wstring other = base() + L"/other";
    mkdir(narrow(other).c_str(), 0700);
    dir.deleteDirectory(other);
    EXPECT_TRUE(exists(other));
    EXPECT_FALSE(exists(dir.getBasePath()));
    EXPECT_TRUE(recorder.has(2, "TemporaryDir::deleteDirectory()",
                             "Deleting directory [" + narrow(dir.getBasePath()) + "] - success"));
}

TEST_F(TemporaryDirTest, DeleteDirectoryBeforeInitFailsAndRemovesNothing) {
    TemporaryDir dir(&log, base().c_str());
    dir.deleteDirectory(base());
    EXPECT_TRUE(exists(base()));
    const std::vector<std::string> texts = recorder.textsOf("TemporaryDir::deleteDirectory()");
    ASSERT_EQ(1u, texts.size());
    EXPECT_NE(std::string::npos, texts[0].find("] - failed")) << texts[0];
}

TEST_F(TemporaryDirTest, DestructorRemovesFilesAndDirectory) {
    std::wstring path;
    {
        TemporaryDir dir(&log, base().c_str());
        ASSERT_EQ(0, dir.init(L"zuk_"));
        path = dir.getBasePath();
        std::wstring name;
        dir.getTmpFile(name, L"config", L".xml");
        std::ofstream(narrow(name)) << "x";
    }
    EXPECT_FALSE(exists(path));
}

TEST_F(TemporaryDirTest, DestructorSpeaksFirst) {
    { const TemporaryDir dir(&log, base().c_str()); }
    EXPECT_TRUE(recorder.has(2, "TemporaryDir::~TemporaryDir()", "Dealocation()"));
}

TEST_F(TemporaryDirTest, FileOfAnotherNameKeepsTheDirectory) {
    std::wstring path;
    {
        TemporaryDir dir(&log, base().c_str());
        ASSERT_EQ(0, dir.init(L"zuk_"));
        path = dir.getBasePath();
        std::ofstream(narrow(path) + "/stranger") << "x";
    }
    EXPECT_TRUE(exists(path + L"/stranger"));
    EXPECT_TRUE(recorder.has(2, "TemporaryDir::deleteDirectory()",
                             "Deleting directory [" + narrow(path) + "] - failed"));
}

TEST_F(TemporaryDirTest, RandomNamesAreDigitsAndLettersWithoutZ) {
    TemporaryDir dir(nullptr, base().c_str());
    const std::wstring head = L"p" + std::to_wstring(getpid()) + std::to_wstring(getppid());
    for (int i = 0; i < 500; ++i) {
        const std::wstring name = dir.getRandomName(L"p", L".s", 9);
        ASSERT_EQ(head.size() + 10 + 2, name.size());
        for (const wchar_t c : name.substr(head.size(), 10)) {
            const bool allowed =
                (L'0' <= c && c <= L'9') || (L'A' <= c && c <= L'Z') || (L'a' <= c && c <= L'y');
            EXPECT_TRUE(allowed) << static_cast<int>(c);
        }
    }
}

// Every value of one draw, so that the uneven distribution is pinned down as well.
TEST_F(TemporaryDirTest, RandomCharacterOfEveryDraw) {
    std::string bytes;
    std::wstring expected;
    for (unsigned draw = 0; draw < 122; ++draw) {
        bytes.append(reinterpret_cast<const char*>(&draw), sizeof draw);
        unsigned c = draw < 48 ? draw + 48 : draw;
        if (c >= 58 && c <= 64) c += 7;
        if (c >= 91 && c <= 96) c += 6;
        expected.push_back(static_cast<wchar_t>(c));
    }
    const RedirectedOpen device("/dev/urandom", folder.file("urandom", bytes));
    TemporaryDir dir(nullptr, base().c_str());
    const std::wstring head = std::to_wstring(getpid()) + std::to_wstring(getppid());
    EXPECT_EQ(head + expected, dir.getRandomName(nullptr, nullptr, 121));
}

TEST_F(TemporaryDirTest, RandomNumbersComeFromTheSecondDeviceWhenTheFirstIsMissing) {
    const unsigned number = 0x01020304;
    const RedirectedOpen missing("/dev/urandom", "");
    const RedirectedOpen device(
        "/dev/random",
        folder.file("random", std::string(reinterpret_cast<const char*>(&number), sizeof number)));
    TemporaryDir dir(nullptr, base().c_str());
    EXPECT_EQ(number, dir.getRand());
}

TEST_F(TemporaryDirTest, RandomNumbersComeFromRandWithoutADevice) {
    const RedirectedOpen first("/dev/urandom", "");
    const RedirectedOpen second("/dev/random", "");
    TemporaryDir dir(nullptr, base().c_str());
    std::srand(1);
    const auto expected = static_cast<unsigned>(std::rand());
    std::srand(1);
    EXPECT_EQ(expected, dir.getRand());
}

TEST_F(TemporaryDirTest, RandomNumbersComeFromRandWhenTheDeviceRunsDry) {
    const RedirectedOpen device("/dev/urandom", folder.file("dry", "abc"));
    TemporaryDir dir(nullptr, base().c_str());
    std::srand(1);
    const auto expected = static_cast<unsigned>(std::rand());
    std::srand(1);
    EXPECT_EQ(expected, dir.getRand());
}

TEST_F(TemporaryDirTest, ConversionsKeepTheLowByteAndTheSign) {
    TemporaryDir dir(nullptr, base().c_str());
    EXPECT_EQ("\xe9\xac", dir.WStringToString(L"\u00e9\u20ac"));
    EXPECT_EQ(std::wstring(1, wchar_t(-23)), dir.StringToWString("\xe9"));
}

TEST_F(TemporaryDirTest, WorksWithoutALogger) {
    TemporaryDir dir(nullptr, base().c_str());
    std::wstring name;
    EXPECT_EQ(0, dir.init(L"zuk_"));
    EXPECT_EQ(0, dir.getTmpFile(name, nullptr, nullptr));
    EXPECT_EQ(0, dir.deleteFiles(true));
}

}  // namespace
