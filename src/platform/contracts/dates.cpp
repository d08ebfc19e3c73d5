// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/dates.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "platform/contracts/runtime.h"

namespace {

constexpr std::int64_t SecondsOfDay = 86400;
constexpr std::int64_t ZeroDayFromEpoch = 25569;  // days from 1899-12-30 to 1970-01-01
constexpr double FirstDay = -657434;              // 0100-01-01, the first date that a value can hold
constexpr double AfterLastDay = 2958466;          // 10000-01-01

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
    const std::int64_t quotient = value / divisor;
    return value % divisor < 0 ? quotient - 1 : quotient;
}

// The calendar repeats after 400 years. std::chrono works on the part within them: it holds fewer years than
// the values here.
constexpr int YearsOfEra = 400;
constexpr std::int64_t DaysOfEra = 146097;

std::chrono::year YearOfEra(std::int64_t year) {
    return std::chrono::year(static_cast<int>(year - FloorDivide(year, YearsOfEra) * YearsOfEra));
}

int DaysInMonth(std::int64_t year, int month) {
    const auto last = YearOfEra(year) / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

std::int64_t DaysFromZero(std::int64_t year, int month, std::int64_t day) {
    const std::chrono::sys_days first = YearOfEra(year) / month / 1;
    return first.time_since_epoch().count() + FloorDivide(year, YearsOfEra) * DaysOfEra + day - 1 +
           ZeroDayFromEpoch;
}

DateParts SplitDay(std::int64_t dayNumber) {
    const std::int64_t fromEpoch = dayNumber - ZeroDayFromEpoch;
    const std::int64_t era = FloorDivide(fromEpoch, DaysOfEra);
    const std::chrono::days dayOfEra(fromEpoch - era * DaysOfEra);
    const std::chrono::year_month_day date{std::chrono::sys_days(dayOfEra)};
    DateParts parts{};
    parts.year = static_cast<int>(static_cast<int>(date.year()) + era * YearsOfEra);
    parts.month = static_cast<int>(static_cast<unsigned>(date.month()));
    parts.day = static_cast<int>(static_cast<unsigned>(date.day()));
    return parts;
}

}  // namespace

DateValue DateValue::FromDays(double days) {
    if (!(days >= FirstDay && days < AfterLastDay)) {
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
