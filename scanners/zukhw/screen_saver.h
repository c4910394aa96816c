#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// How a screen is blanked and locked when nobody is there, by one of the files that say so.
struct ScreenSaverSettings {
    std::string program;
    std::optional<bool> enabled, lockEnabled;
    std::optional<std::uint64_t> timeoutSeconds, lockDelaySeconds;
};

// ~/.xscreensaver
ScreenSaverSettings parseXScreenSaver(std::string_view text);
// ~/.config/kscreenlockerrc
ScreenSaverSettings parseKScreenLocker(std::string_view text);
// /etc/systemd/logind.conf; no value when it leaves an idle system alone.
std::optional<ScreenSaverSettings> parseLogindIdle(std::string_view text);

// "0:10:00" in seconds.
std::optional<std::uint64_t> parseClockTime(std::string_view text);
// "1h 30min" in seconds; a number without a unit is seconds.
std::optional<std::uint64_t> parseTimeSpan(std::string_view text);
