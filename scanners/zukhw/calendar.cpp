#include "scanners/zukhw/calendar.h"

#include <ctime>

namespace {

// The calendar repeats every 400 years. Years are counted from March, so that the day that some of them lack
// is their last one.
constexpr std::int64_t kDaysIn400Years = 146097;
constexpr std::int64_t kFrom0To1970 = 719468;  // 1 March 0 to 1 January 1970

// Months have 31 and 30 days in turns, but for two long ones that follow each other after every five.
constexpr std::int64_t daysBeforeMonth(std::int64_t monthFromMarch) {
    return (153 * monthFromMarch + 2) / 5;
}

}  // namespace

Date dateOfDay(std::int64_t daysSince1970) {
    const std::int64_t since = daysSince1970 + kFrom0To1970;
    const std::int64_t day = since % kDaysIn400Years;
    const std::int64_t year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    const std::int64_t dayOfYear = day - (365 * year + year / 4 - year / 100);
    const std::int64_t fromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = fromMarch < 10 ? fromMarch + 3 : fromMarch - 9;
    return {since / kDaysIn400Years * 400 + year + (month <= 2 ? 1 : 0), month,
            dayOfYear - daysBeforeMonth(fromMarch) + 1};
}

std::int64_t secondsOf(const tm& parts) {
    const std::int64_t month = parts.tm_mon + 1;
    const std::int64_t year = std::int64_t{parts.tm_year} + 1900 - (month <= 2 ? 1 : 0);
    const std::int64_t fromMarch = month > 2 ? month - 3 : month + 9;
    const std::int64_t days = 365 * year + year / 4 - year / 100 + year / 400 + daysBeforeMonth(fromMarch) +
                              parts.tm_mday - 1 - kFrom0To1970;
    return days * kSecondsOfDay + parts.tm_hour * 3600 + parts.tm_min * 60 + parts.tm_sec;
}
