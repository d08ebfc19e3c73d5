// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/dates.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/contracts/runtime.h"

namespace {

constexpr std::int64_t SecondsOfDay = 86400;
constexpr std::int64_t ZeroDayFromEpoch = 25569;  // days from 1899-12-30 to 1970-01-01
constexpr double FirstDay = -657434;              // 0100-01-01, the first date that a value can hold
constexpr double BehindLastDay = 2958466;         // 10000-01-01

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
    const std::int64_t quotient = value / divisor;
    return value % divisor < 0 ? quotient - 1 : quotient;
}

bool IsLeapYear(std::int64_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(std::int64_t year, int month) {
    constexpr std::array<int, 12> Days{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : Days[static_cast<std::size_t>(month - 1)];
}

// Years start in March here, so that the leap day is the last day of its year.
std::int64_t DaysFromZero(std::int64_t year, int month, std::int64_t day) {
    const std::int64_t marchYear = month <= 2 ? year - 1 : year;
    const std::int64_t era = FloorDivide(marchYear, 400);
    const std::int64_t yearOfEra = marchYear - era * 400;
    const std::int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468 + ZeroDayFromEpoch;
}

DateParts SplitDay(std::int64_t dayNumber) {
    const std::int64_t shifted = dayNumber - ZeroDayFromEpoch + 719468;
    const std::int64_t era = FloorDivide(shifted, 146097);
    const std::int64_t dayOfEra = shifted - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t marchMonth = (5 * dayOfYear + 2) / 153;
    DateParts parts{};
    parts.day = static_cast<int>(dayOfYear - (153 * marchMonth + 2) / 5 + 1);
    parts.month = static_cast<int>(marchMonth < 10 ? marchMonth + 3 : marchMonth - 9);
    parts.year = static_cast<int>(yearOfEra + era * 400 + (parts.month <= 2 ? 1 : 0));
    return parts;
}

}  // namespace

DateValue DateValue::FromDays(double days) {
    if (!(days >= FirstDay && days < BehindLastDay)) {
        throw RuntimeError(err::Overflow);
    }
    return FromSeconds(std::llround(days * static_cast<double>(SecondsOfDay)));
}

double DateValue::Days() const {
    return static_cast<double>(m_seconds) / static_cast<double>(SecondsOfDay);
}

std::int64_t DateValue::DayNumber() const {
    return FloorDivide(m_seconds, SecondsOfDay);
}

int DateValue::SecondOfDay() const {
    return static_cast<int>(m_seconds - DayNumber() * SecondsOfDay);
}

DateValue DateSerial(int year, int month, int day) {
    const std::int64_t months = static_cast<std::int64_t>(year) * 12 + month - 1;
    const std::int64_t normalYear = FloorDivide(months, 12);
    const int normalMonth = static_cast<int>(months - normalYear * 12) + 1;
    return DateValue::FromSeconds(DaysFromZero(normalYear, normalMonth, day) * SecondsOfDay);
}

DateValue TimeSerial(int hour, int minute, int second) {
    return DateValue::FromSeconds(static_cast<std::int64_t>(hour) * 3600 +
                                  static_cast<std::int64_t>(minute) * 60 + second);
}

DateParts Split(DateValue value) {
    DateParts parts = SplitDay(value.DayNumber());
    const int seconds = value.SecondOfDay();
    parts.hour = seconds / 3600;
    parts.minute = seconds / 60 % 60;
    parts.second = seconds % 60;
    return parts;
}

int Year(DateValue value) {
    return Split(value).year;
}
int Month(DateValue value) {
    return Split(value).month;
}
int Day(DateValue value) {
    return Split(value).day;
}

int WeekdayFromMonday(DateValue value) {
    const std::int64_t fromSaturday = value.DayNumber() - FloorDivide(value.DayNumber(), 7) * 7;
    return static_cast<int>((fromSaturday + 5) % 7) + 1;  // 1899-12-30 is a Saturday
}

DateValue DatePart(DateValue value) {
    return DateValue::FromSeconds(value.DayNumber() * SecondsOfDay);
}
DateValue TimePart(DateValue value) {
    return DateValue::FromSeconds(value.SecondOfDay());
}

bool IsValidDate(int year, int month, int day) {
    return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= DaysInMonth(year, month);
}

DateValue AddDays(DateValue value, std::int64_t days) {
    return DateValue::FromSeconds(value.Seconds() + days * SecondsOfDay);
}

DateValue AddMonths(DateValue value, int months) {
    const DateParts parts = Split(value);
    const std::int64_t target = static_cast<std::int64_t>(parts.year) * 12 + parts.month - 1 + months;
    const std::int64_t year = FloorDivide(target, 12);
    const int month = static_cast<int>(target - year * 12) + 1;
    const std::int64_t day = DaysFromZero(year, month, std::min(parts.day, DaysInMonth(year, month)));
    return DateValue::FromSeconds(day * SecondsOfDay + value.SecondOfDay());
}

std::int64_t DiffHours(DateValue from, DateValue to) {
    return FloorDivide(to.Seconds(), 3600) - FloorDivide(from.Seconds(), 3600);
}

std::int64_t DiffDays(DateValue from, DateValue to) {
    return to.DayNumber() - from.DayNumber();
}
