#pragma once

#include <cstdint>

struct tm;

// Days and dates in UTC, from the year 1 on. The system's own functions read the time zone's file first, even
// for times that are in no zone: a file that a copied machine has nothing to do with.

constexpr std::int64_t kSecondsOfDay = 86400;

struct Date {
    std::int64_t year;
    std::int64_t month;  // from 1
    std::int64_t day;    // from 1
};

Date dateOfDay(std::int64_t daysSince1970);

// Seconds since 1970 of what strptime found.
std::int64_t secondsOf(const tm& parts);
