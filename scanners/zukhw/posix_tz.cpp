#include "scanners/zukhw/posix_tz.h"

#include <algorithm>
#include <array>

#include "scanners/zukhw/text.h"

namespace {

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;
constexpr int kWeekdays = 7;

bool take(std::string_view* text, char c) {
    if (text->empty() || text->front() != c) return false;
    text->remove_prefix(1);
    return true;
}

std::optional<int> takeNumber(std::string_view* text, int lowest, int highest) {
    constexpr std::size_t kMaxDigits = 3;
    int number = 0;
    std::size_t digits = 0;
    while (digits < text->size() && digits < kMaxDigits && (*text)[digits] >= '0' && (*text)[digits] <= '9') {
        number = number * 10 + ((*text)[digits++] - '0');
    }
    text->remove_prefix(digits);
    if (digits == 0 || number < lowest || number > highest) return std::nullopt;
    return number;
}

// "CET" or "<+0330>".
bool takeName(std::string_view* text) {
    constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const bool quoted = take(text, '<');
    const std::size_t end =
        quoted ? text->find('>') : std::min(text->find_first_not_of(kLetters), text->size());
    if (end == std::string_view::npos || end == 0) return false;
    text->remove_prefix(end + (quoted ? 1 : 0));
    return true;
}

// "[+-]hh[:mm[:ss]]" in seconds.
std::optional<std::int64_t> takeTime(std::string_view* text) {
    constexpr int kMaxHours = 167;
    const bool negative = take(text, '-');
    if (!negative) take(text, '+');
    const auto hours = takeNumber(text, 0, kMaxHours);
    const auto minutes = take(text, ':') ? takeNumber(text, 0, 59) : 0;
    const auto seconds = take(text, ':') ? takeNumber(text, 0, 59) : 0;
    if (!hours || !minutes || !seconds) return std::nullopt;
    const std::int64_t time = *hours * kHour + *minutes * kMinute + *seconds;
    return negative ? -time : time;
}

bool takeMonthDay(std::string_view* text, PosixTimeZone::Change* change) {
    const auto month = takeNumber(text, 1, 12);
    const auto week = take(text, '.') ? takeNumber(text, 1, 5) : std::nullopt;
    const auto day = take(text, '.') ? takeNumber(text, 0, 6) : std::nullopt;
    if (!month || !week || !day) return false;
    change->month = *month;
    change->week = *week;
    change->day = *day;
    return true;
}

// ",M3.5.0/3", ",J60" or ",59".
bool takeChange(std::string_view* text, PosixTimeZone::Change* change) {
    using Day = PosixTimeZone::Change::Day;
    if (!take(text, ',')) return false;
    if (take(text, 'M')) {
        if (!takeMonthDay(text, change)) return false;
    } else {
        const bool withoutLeapDay = take(text, 'J');
        const auto day = takeNumber(text, withoutLeapDay ? 1 : 0, 365);
        if (!day) return false;
        change->kind = withoutLeapDay ? Day::WithoutLeapDay : Day::WithLeapDay;
        change->day = *day;
    }
    if (!take(text, '/')) return true;
    const auto seconds = takeTime(text);
    if (seconds) change->seconds = *seconds;
    return seconds.has_value();
}

bool isLeap(std::int64_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

// Days from 1970 to the first of January.
std::int64_t firstDayOf(std::int64_t year) {
    const std::int64_t before = year - 1;
    constexpr std::int64_t kUntil1970 = 719162;
    return before * 365 + before / 4 - before / 100 + before / 400 - kUntil1970;
}

std::int64_t yearOf(std::int64_t time) {
    constexpr std::int64_t kLongYear = 366 * kDay;
    std::int64_t year = 1970 + time / kLongYear;
    while (firstDayOf(year + 1) * kDay <= time) ++year;
    return year;
}

// The day of the year, from 0, on which a weekday of a month falls; the fifth is the last that there is.
std::int64_t weekdayOfMonth(const PosixTimeZone::Change& change, std::int64_t year) {
    static constexpr std::array<int, 13> kBefore = {0,   31,  59,  90,  120, 151, 181,
                                                    212, 243, 273, 304, 334, 365};
    const auto month = static_cast<std::size_t>(change.month);
    const int leap = isLeap(year) ? 1 : 0;
    const int first = kBefore[month - 1] + (month > 2 ? leap : 0);
    const int next = kBefore[month] + (month >= 2 ? leap : 0);
    constexpr int kThursday = 4;  // what 1970 began with
    const std::int64_t weekday = (firstDayOf(year) + first + kThursday) % kWeekdays;
    std::int64_t day = first + (change.day - weekday + kWeekdays) % kWeekdays + (change.week - 1) * kWeekdays;
    while (day >= next) day -= kWeekdays;
    return day;
}

// When the change happens in local time, in seconds since 1970 as if that were UTC.
std::int64_t localTimeOf(const PosixTimeZone::Change& change, std::int64_t year) {
    using Day = PosixTimeZone::Change::Day;
    constexpr int kEndOfFebruary = 59;
    std::int64_t day = change.day;
    if (change.kind == Day::WeekdayOfMonth) day = weekdayOfMonth(change, year);
    if (change.kind == Day::WithoutLeapDay)
        day = change.day - (isLeap(year) && change.day > kEndOfFebruary ? 0 : 1);
    return (firstDayOf(year) + day) * kDay + change.seconds;
}

}  // namespace

std::int64_t PosixTimeZone::offsetAt(std::int64_t time) const {
    constexpr std::int64_t kYear9999 = 253402300800;
    if (!daylight || time < 0 || time >= kYear9999) return standard;
    const std::int64_t year = yearOf(std::max<std::int64_t>(time + standard, 0));
    const std::int64_t begin = localTimeOf(begins, year) - standard;
    const std::int64_t end = localTimeOf(ends, year) - *daylight;
    // South of the equator it lasts over the turn of the year.
    const bool saving = begin < end ? time >= begin && time < end : time >= begin || time < end;
    return saving ? *daylight : standard;
}

std::optional<PosixTimeZone> parsePosixTimeZone(std::string_view text) {
    PosixTimeZone zone;
    if (!takeName(&text)) return std::nullopt;
    const auto west = takeTime(&text);
    if (!west) return std::nullopt;
    zone.standard = -*west;
    if (text.empty()) return zone;
    if (!takeName(&text)) return std::nullopt;
    zone.daylight = zone.standard + kHour;
    if (!startsWith(text, ",")) {
        const auto daylightWest = takeTime(&text);
        if (!daylightWest) return std::nullopt;
        zone.daylight = -*daylightWest;
    }
    if (!takeChange(&text, &zone.begins) || !takeChange(&text, &zone.ends) || !text.empty())
        return std::nullopt;
    return zone;
}

std::string_view timeZoneRule(std::string_view file) {
    constexpr std::string_view kMagic = "TZif";
    constexpr std::size_t kHeader = 44;
    if (!startsWith(file, kMagic) || file.size() < kHeader || file[kMagic.size()] < '2') return "";
    if (file.back() != '\n') return "";
    file.remove_suffix(1);
    const std::size_t before = file.find_last_of('\n');
    return before == std::string_view::npos ? std::string_view() : file.substr(before + 1);
}
