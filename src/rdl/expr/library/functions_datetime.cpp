// SPDX-License-Identifier: GPL-3.0-or-later
// Static members of DateTime and TimeSpan, and what New makes of them.
#include <cmath>
#include <string>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/date_arithmetic.h"

namespace rdl::expr {
namespace {

constexpr std::int64_t TicksPerHour = 36'000'000'000, TicksPerMinute = 600'000'000,
                       TicksPerMillisecond = 10'000;
constexpr std::int64_t TicksOf1899 = 599'264'352'000'000'000;  // day 0 of the numbers that stand for dates

// New DateTime(year, month, day [, hour, minute, second [, millisecond]]), strict unlike DateSerial, or New
// DateTime(ticks).
Value NewDateTime(const Call& call) {
    std::int64_t parts[7] = {1, 1, 1, 0, 0, 0, 0};
    for (int i = 0; i < call.count(); ++i) {
        if (!call.Integer(i, parts[i])) {
            return call.error;
        }
    }
    if (call.count() == 0) {
        return Value::DateTime(0);
    }
    if (call.count() == 1) {
        return parts[0] >= 0 && parts[0] <= MaxTicks ? Value::DateTime(parts[0]) : DateOutOfRange();
    }
    const bool date = parts[0] >= 1 && parts[0] <= 9999 && parts[1] >= 1 && parts[1] <= 12 && parts[2] >= 1 &&
                      parts[2] <= DaysInMonth(static_cast<int>(parts[0]), static_cast<int>(parts[1]));
    const bool time = call.count() != 2 && parts[3] >= 0 && parts[3] < 24 && parts[4] >= 0 && parts[4] < 60 &&
                      parts[5] >= 0 && parts[5] < 60 && parts[6] >= 0 && parts[6] < 1000;
    if (!date || !time) {
        return Value::Error("There is no such date");
    }
    return Value::DateTime(MakeTicks(static_cast<int>(parts[0]), static_cast<int>(parts[1]),
                                     static_cast<int>(parts[2]), static_cast<int>(parts[3]),
                                     static_cast<int>(parts[4]), static_cast<int>(parts[5])) +
                           parts[6] * TicksPerMillisecond);
}

Value DaysIn(const Call& call) {
    std::int64_t year = 0;
    std::int64_t month = 0;
    if (!call.Integer(0, year) || !call.Integer(1, month)) {
        return call.error;
    }
    const bool known = year >= 1 && year <= 9999 && month >= 1 && month <= 12;
    return known ? Value::Integer(DaysInMonth(static_cast<int>(year), static_cast<int>(month)))
                 : DateOutOfRange();
}

Value IsLeapYear(const Call& call) {
    std::int64_t year = 0;
    if (!call.Integer(0, year)) {
        return call.error;
    }
    return year >= 1 && year <= 9999 ? Value::Boolean(DaysInMonth(static_cast<int>(year), 2) == 29)
                                     : DateOutOfRange();
}

template <std::int64_t Unit>
Value SpanOf(const Call& call) {
    double count = 0;
    std::int64_t ticks = 0;
    if (!call.Number(0, count)) {
        return call.error;
    }
    const double total = count * static_cast<double>(Unit);
    if (!(std::fabs(total) < 9.2e18)) {
        return Value::Error("A time span lies outside its range");
    }
    ticks = std::llround(total);
    return Value::TimeSpan(ticks);
}

// New TimeSpan(ticks), (hours, minutes, seconds) or (days, hours, minutes, seconds [, milliseconds]).
Value NewTimeSpan(const Call& call) {
    std::int64_t parts[5] = {};
    for (int i = 0; i < call.count(); ++i) {
        if (!call.Integer(i, parts[i])) {
            return call.error;
        }
        if (call.count() > 1 && (parts[i] < -10'000'000 || parts[i] > 10'000'000)) {
            return Value::Error("A time span lies outside its range");
        }
    }
    if (call.count() == 1) {
        return Value::TimeSpan(parts[0]);
    }
    const bool days = call.count() >= 4;
    if (call.count() == 2) {
        return Value::Error("A time span is not made of two numbers");
    }
    const std::int64_t hours = days ? parts[0] * 24 + parts[1] : parts[0];
    return Value::TimeSpan(((hours * 60 + parts[days ? 2 : 1]) * 60 + parts[days ? 3 : 2]) * TicksPerSecond +
                           parts[4] * TicksPerMillisecond);
}

// Parse(text [, culture])
Value ParseDate(const Call& call) {
    std::int64_t ticks = 0;
    if (call[0].kind() == Kind::DateTime) {
        return call[0];
    }
    return call[0].IsText() && ParseDateTime(call[0].AsText(), CultureOf(call, 1), ticks)
               ? Value::DateTime(ticks)
               : NoConversion(call[0], "a date");
}

// Convert: Nothing is the first moment.
Value ToDate(const Call& call) {
    return call[0].IsNull() ? Value::DateTime(0) : ParseDate(call);
}

// ParseExact(text, format or formats, culture [, styles])
Value ParseDateExact(const Call& call) {
    const std::string text = call.Text(0);
    const ValueList one = {call[1]};
    std::int64_t ticks = 0;
    for (const Value& format : call[1].kind() == Kind::List ? call[1].AsList() : one) {
        if (format.IsText() && ParseDateTimeExact(text, format.AsText(), CultureOf(call, 2), ticks)) {
            return Value::DateTime(ticks);
        }
    }
    return NoConversion(call[0], "a date");
}

Value FromOADate(const Call& call) {
    double days = 0;
    std::int64_t ticks = 0;
    if (!call.Number(0, days)) {
        return call.error;
    }
    // Before day 0 the fraction still counts forward.
    const double whole = std::trunc(days);
    const double milliseconds = std::round(std::fabs(days - whole) * 86'400'000);
    const bool possible = std::fabs(days) < 3e6 && AddUnits(TicksOf1899, whole, TicksPerDay, ticks) &&
                          AddUnits(ticks, milliseconds, TicksPerMillisecond, ticks);
    return possible ? Value::DateTime(ticks) : DateOutOfRange();
}

Value ToOADate(const Call& call) {
    std::int64_t ticks = 0;
    if (!call.Date(0, ticks)) {
        return call.error;
    }
    const std::int64_t passed = ticks - TicksOf1899;
    const std::int64_t day = passed / TicksPerDay - (passed % TicksPerDay < 0 ? 1 : 0);
    const double fraction =
        static_cast<double>(passed - day * TicksPerDay) / static_cast<double>(TicksPerDay);
    return Value::Real(static_cast<double>(day) + (day < 0 ? -fraction : fraction));
}

Value Moved(std::int64_t ticks, std::int64_t minutes) {
    std::int64_t result = 0;
    return AddTicks(ticks, minutes * TicksPerMinute, result) ? Value::DateTime(result) : DateOutOfRange();
}

Value ToUniversalTime(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Moved(ticks, -ZoneMinutes(ticks)) : call.error;
}
Value ToLocalTime(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Moved(ticks, ZoneMinutes(ticks)) : call.error;
}
Value UtcNow(const Call& call) {
    const std::int64_t now = call.environment.NowTicks();
    return Moved(now, -ZoneMinutes(now));
}

Value ParseSpan(const Call& call) {
    std::int64_t ticks = 0;
    if (call[0].kind() == Kind::TimeSpan) {
        return call[0];
    }
    return ParseTimeSpan(call.Text(0), ticks) ? Value::TimeSpan(ticks) : NoConversion(call[0], "a time span");
}

constexpr FunctionInfo functions[] = {
    {"new.datetime", 0, 7, NewDateTime},
    {"new.date", 0, 7, NewDateTime},
    {"new.timespan", 0, 5, NewTimeSpan},
    {"datetime.parse", 1, 3, ParseDate},
    {"date.parse", 1, 3, ParseDate},
    {"convert.todatetime", 1, 2, ToDate},
    {"datetime.parseexact", 3, 4, ParseDateExact},
    {"date.parseexact", 3, 4, ParseDateExact},
    {"datetime.utcnow", 0, 0, UtcNow},
    {"datetime.fromoadate", 1, 1, FromOADate},
    {"date.fromoadate", 1, 1, FromOADate},
    {".tooadate", 1, 1, ToOADate},
    {".touniversaltime", 1, 1, ToUniversalTime},
    {".tolocaltime", 1, 1, ToLocalTime},
    {"timespan.parse", 1, 2, ParseSpan},
    {"datetime.daysinmonth", 2, 2, DaysIn},
    {"date.daysinmonth", 2, 2, DaysIn},
    {"datetime.isleapyear", 1, 1, IsLeapYear},
    {"date.isleapyear", 1, 1, IsLeapYear},
    {"timespan.fromdays", 1, 1, SpanOf<TicksPerDay>},
    {"timespan.fromhours", 1, 1, SpanOf<TicksPerHour>},
    {"timespan.fromminutes", 1, 1, SpanOf<TicksPerMinute>},
    {"timespan.fromseconds", 1, 1, SpanOf<TicksPerSecond>},
    {"timespan.frommilliseconds", 1, 1, SpanOf<10'000>},
    {"timespan.fromticks", 1, 1, SpanOf<1>},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> DateTypeFunctions() {
    return functions;
}

}  // namespace rdl::expr
