#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// The rule at the end of a time zone file, "CET-1CEST,M3.5.0,M10.5.0/3": how local time follows from UTC now
// and in the years to come. Offsets are seconds east of Greenwich.
struct PosixTimeZone {
    // The day and time of a change.
    struct Change {
        enum class Day { WithLeapDay, WithoutLeapDay, WeekdayOfMonth };
        Day kind = Day::WeekdayOfMonth;
        int day = 0;  // of the year, from 0, or from 1 without leap day; else the weekday, 0 is Sunday
        int month = 0, week = 0;
        std::int64_t seconds = 2 * 3600;  // of local time, from midnight
    };

    std::int64_t standard = 0;
    std::optional<std::int64_t> daylight;  // none where clocks are not changed
    Change begins, ends;                   // of daylight saving

    // The offset at a time in seconds since 1970.
    std::int64_t offsetAt(std::int64_t time) const;
};

// No value when it is no such rule, or one whose days of change are not told.
std::optional<PosixTimeZone> parsePosixTimeZone(std::string_view text);

// The rule in a time zone file (RFC 9636) of version 2 or later; empty when there is none.
std::string_view timeZoneRule(std::string_view file);
