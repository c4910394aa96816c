#pragma once

#include <string>

class ZUKlog;

// Decides which directory holds the scanner executables: the one that the caller names, else the one
// that the installation file /etc/zuk/zuk.ini records ("ZUK_HomeDirectory =" DIR, taken as DIR/bin).
class ZUKlocation {
  public:
    // Resolves the directory at once. `logger` and `homeDir` may be null; the search does not depend on
    // `exploiter`.
    ZUKlocation(ZUKlog* logger, const char* exploiter, const wchar_t* homeDir);
    ~ZUKlocation();

    // The resolved directory, normalised; empty when none is known.
    std::wstring getLocation();
    // The directory that the installation file names, as written there; empty when it names none.
    std::wstring getSystemLocation(const char* exploiter);
    // Collapses doubled separators in place; nothing else changes.
    void normalizeDir(std::wstring& dir);
    std::wstring getDirectorySeparator();

    std::wstring location;
    ZUKlog* log;
};
