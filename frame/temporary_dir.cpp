#include "frame/temporary_dir.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>

#include "frame/narrow.h"
#include "frame/path.h"
#include "frame/trace.h"
#include "platform/wide_format.h"

namespace {

constexpr int kFailed = 6;
constexpr mode_t kPrivate = S_IFDIR | S_IRWXU;

struct Release {
    void operator()(wchar_t* text) const { std::free(text); }
};

// From 30 to 59: how many names are tried before giving up.
int attempts() {
    return std::rand() % 30 + 30;
}

std::wstring attemptSuffix(int attempt) {
    const std::unique_ptr<wchar_t, Release> suffix(i_wsprintf("_%d", attempt));
    return suffix ? std::wstring(suffix.get()) : std::wstring();
}

bool exists(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

// Digits, capital letters and "a" to "y", unevenly: names keep the shape that they have always had.
char nameCharacter(unsigned random) {
    unsigned c = random % 122;
    if (c < 48) c += 48;
    if (58 <= c && c <= 64) c += 7;
    if (91 <= c && c <= 96) c += 6;
    return static_cast<char>(c);
}

}  // namespace

TemporaryDir::TemporaryDir() {
    TemporaryDir(static_cast<ZUKlog*>(nullptr), nullptr);
}
TemporaryDir::TemporaryDir(ZUKlog* logger) {
    TemporaryDir(logger, nullptr);
}
TemporaryDir::TemporaryDir(const wchar_t* base) {
    TemporaryDir(nullptr, base);
}

TemporaryDir::TemporaryDir(ZUKlog* logger, const wchar_t* base)
    : initialised(false), dirName(nullptr), log(logger), random(nullptr) {
    basePath = base != nullptr ? base : getSystemTempPath();
    normalizeDir(basePath);
    traceMAX(log, "TemporaryDir::TemporaryDir()", "BasePath [%S]", basePath.c_str());
    random = std::fopen("/dev/urandom", "rbe");
    if (random == nullptr) random = std::fopen("/dev/random", "rbe");
}

TemporaryDir::~TemporaryDir() {
    traceMAX(log, "TemporaryDir::~TemporaryDir()", "Dealocation()");
    if (initialised) {
        if (!files.empty()) deleteFiles(true);
        deleteDirectory(dirPath);
        initialised = false;
    }
    if (random != nullptr) std::fclose(random);
}

int TemporaryDir::init(const wchar_t* prefix) {
    constexpr char kHere[] = "TemporaryDir::init()";
    const int count = attempts();  // before seeding, so that it is the same in every fresh process
    traceMAX(log, kHere, "initialization");
    std::srand(static_cast<unsigned>(std::time(nullptr)));

    bool created = false;
    for (int attempt = count; attempt > 0 && !created; --attempt) {
        const int length = static_cast<int>(getRand() % 5 + 5);
        dirPath = basePath + L"/" + getRandomName(prefix, nullptr, length) + attemptSuffix(attempt);
        normalizeDir(dirPath);
        const std::string path = WStringToString(dirPath);
        created = !exists(path) && mkdir(path.c_str(), kPrivate) == 0;
        traceMAX(log, kHere, "Creating directory [%S] %s", dirPath.c_str(), created ? "success" : "failed");
    }

    dirName = dirPath.c_str();
    if (created) initialised = true;
    traceMAX(log, kHere, "initialization %s [%S]", created ? "successful" : "failed", dirPath.c_str());
    return created ? 0 : kFailed;
}

int TemporaryDir::getTmpFile(std::wstring& out, const wchar_t* prefix, const wchar_t* extension) {
    if (!initialised) return kFailed;
    for (int attempt = attempts(); attempt > 0; --attempt) {
        const int length = static_cast<int>(getRand() % 5 + 5);
        std::wstring name =
            dirPath + L"/" + getRandomName(prefix, extension, length) + attemptSuffix(attempt);
        normalizeDir(name);
        if (exists(WStringToString(name))) continue;

        files.push_back(name);
        out = name;
        traceMAX(log, "TemporaryDir::getTmpFile()", "Requesting tmpFile [%S]", name.c_str());
        return 0;
    }
    return kFailed;
}

int TemporaryDir::deleteFiles(bool /*unused*/) {
    if (!initialised) return kFailed;
    for (const std::wstring& file : files) unlink(WStringToString(file).c_str());
    files.clear();
    return 0;
}

void TemporaryDir::deleteDirectory(std::wstring /*unused*/) {
    const bool removed = dirName != nullptr && rmdir(WStringToString(dirName).c_str()) == 0;
    traceMAX(log, "TemporaryDir::deleteDirectory()", "Deleting directory [%S] - %s",
             dirName != nullptr ? dirName : L"(null)", removed ? "success" : "failed");
}

const wchar_t* TemporaryDir::getBasePath() {
    return dirName;
}

std::wstring TemporaryDir::getSystemTempPath() {
    const char* named = std::getenv("TEMP");
    if (named == nullptr) named = std::getenv("TMP");
    std::wstring path = named != nullptr ? StringToWString(named) : L"/tmp";
    traceMAX(log, "TemporaryDir::getSystemTempPath()", "Requesting system TMP path [%S]", path.c_str());
    return path;
}

std::wstring TemporaryDir::getDirectorySeparator() {
    return L"/";
}

void TemporaryDir::normalizeDir(std::wstring& dir) {
    normalizePath(dir);
}

unsigned TemporaryDir::getRand() {
    std::uint32_t value = 0;
    if (random != nullptr && std::fread(&value, sizeof value, 1, random) == 1) return value;
    return static_cast<unsigned>(std::rand());
}

std::wstring TemporaryDir::getRandomName(const wchar_t* prefix, const wchar_t* suffix, int length) {
    std::string text = std::to_string(getpid()) + std::to_string(getppid());
    for (int i = 0; i <= length; ++i) text.push_back(nameCharacter(getRand()));

    std::wstring name = prefix != nullptr ? prefix : L"";
    name += StringToWString(text);
    if (suffix != nullptr) name += suffix;
    return name;
}

std::wstring TemporaryDir::StringToWString(const std::string& text) {
    return widen(text);
}

std::string TemporaryDir::WStringToString(const std::wstring& text) {
    return narrow(text);
}
