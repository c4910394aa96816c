#pragma once

#include <cstdio>
#include <list>
#include <string>

class ZUKlog;

// A private directory (mode 0700) that hands out fresh file names, remembers them, and removes those
// files and then itself when it is destroyed. The removal is not recursive: a file that was not named
// here keeps the directory alive.
class TemporaryDir {
  public:
    // These three leave the object's plain members unset and must not be used to make a working one.
    TemporaryDir();
    explicit TemporaryDir(ZUKlog* logger);
    explicit TemporaryDir(const wchar_t* base);
    // `base` is the directory to work under; null means TEMP, else TMP, else /tmp. `logger` may be null.
    TemporaryDir(ZUKlog* logger, const wchar_t* base);
    ~TemporaryDir();
    TemporaryDir(const TemporaryDir&) = delete;
    TemporaryDir& operator=(const TemporaryDir&) = delete;

    // Creates the directory. 0, or 6 when it could not be created.
    int init(const wchar_t* prefix);
    // Reserves a fresh name without creating the file. 0 and the full path in `out`, or 6 with `out`
    // untouched.
    int getTmpFile(std::wstring& out, const wchar_t* prefix, const wchar_t* extension);
    // Removes every file handed out. 0, or 6 when the directory was never created.
    int deleteFiles(bool unused);
    // Removes the directory itself, whatever the argument names.
    void deleteDirectory(std::wstring unused);
    // The directory's path; null before init(). Owned by this object.
    const wchar_t* getBasePath();

    std::wstring getSystemTempPath();
    std::wstring getDirectorySeparator();
    void normalizeDir(std::wstring& dir);
    unsigned getRand();
    // `prefix`, process id, parent's process id, length + 1 random characters, `suffix`.
    std::wstring getRandomName(const wchar_t* prefix, const wchar_t* suffix, int length);
    std::wstring StringToWString(const std::string& text);
    std::string WStringToString(const std::wstring& text);

    std::list<std::wstring> files;
    std::wstring basePath;
    std::wstring dirPath;
    bool initialised;
    const wchar_t* dirName;
    ZUKlog* log;
    FILE* random;
};
