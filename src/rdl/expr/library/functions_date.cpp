// SPDX-License-Identifier: GPL-3.0-or-later
// Dates: DateAdd, DateDiff, DatePart, parts of a date, names of months and weekdays.
#include <algorithm>
#include <cmath>
#include <string>

#include "rdl/expr/library/date_parts.h"
#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/date_arithmetic.h"
#include "rdl/values/characters.h"

namespace rdl::expr {
namespace {

// As the numbers of the DateInterval constants.
enum Interval { Year, Quarter, Month, DayOfYear, Day, WeekOfYear, Weekday, Hour, Minute, Second };

constexpr std::string_view IntervalTexts[] = {"yyyy", "q", "m", "y", "d", "ww", "w", "h", "n", "s"};
constexpr std::int64_t TicksPerHour = 36'000'000'000, TicksPerMinute = 600'000'000;

bool ReadInterval(const Call& call, int& interval) {
    const Value& value = call[0];
    if (value.IsText()) {
        const std::string text = Lower(value.AsText());
        const auto* found = std::find(std::begin(IntervalTexts), std::end(IntervalTexts), text);
        if (found != std::end(IntervalTexts)) {
            interval = static_cast<int>(found - std::begin(IntervalTexts));
            return true;
        }
    } else if (std::int64_t number = 0; call.Integer(0, number) && number >= Year && number <= Second) {
        interval = static_cast<int>(number);
        return true;
    }
    call.error = Value::Error("The unit of time is not known: " + call.Text(0));
    return false;
}

// The first day of the week, 0 Sunday: 0 is the culture's, 1 Sunday ... 7 Saturday.
bool FirstDay(const Call& call, int index, int& first) {
    std::int64_t number = 1;
    if (call.Has(index) && !call.Integer(index, number)) {
        return false;
    }
    if (number < 0 || number > 7) {
        call.error = Value::Error("The first day of the week must be 0 to 7");
        return false;
    }
    first = number == 0 ? call.culture().firstDayOfWeek : static_cast<int>(number) - 1;
    return true;
}

// `ticks` is a reference, because the call that returns `possible` sets it.
Value FromTicks(bool possible, const std::int64_t& ticks) {
    return possible ? Value::DateTime(ticks) : DateOutOfRange();
}

Value DateAdd(const Call& call) {
    int interval = 0;
    double count = 0;
    std::int64_t ticks = 0;
    if (!ReadInterval(call, interval) || !call.Number(1, count) || !call.Date(2, ticks)) {
        return call.error;
    }
    if (!(std::fabs(count) < 1e15)) {
        return DateOutOfRange();
    }
    // Only whole units are added.
    const double whole = std::trunc(count);
    std::int64_t result = 0;
    switch (interval) {
        case Year:
        case Quarter:
        case Month: {
            const double months = whole * (interval == Year ? 12 : interval == Quarter ? 3 : 1);
            return FromTicks(
                std::fabs(months) < 1e6 && AddMonths(ticks, static_cast<std::int64_t>(months), result),
                result);
        }
        case WeekOfYear:
            return FromTicks(AddUnits(ticks, whole * 7, TicksPerDay, result), result);
        case Hour:
            return FromTicks(AddUnits(ticks, whole, TicksPerHour, result), result);
        case Minute:
            return FromTicks(AddUnits(ticks, whole, TicksPerMinute, result), result);
        case Second:
            return FromTicks(AddUnits(ticks, whole, TicksPerSecond, result), result);
        default:
            return FromTicks(AddUnits(ticks, whole, TicksPerDay, result), result);
    }
}

std::int64_t StartOfWeek(std::int64_t ticks, int first) {
    const std::int64_t day = ticks / TicksPerDay;
    return day - (SplitTicks(ticks).dayOfWeek - first + 7) % 7;
}

// Boundaries of the unit between two moments: years, quarters, months and weeks are counted by the calendar,
// the others by the time that passed.
Value DateDiff(const Call& call) {
    int interval = 0;
    int first = 0;
    std::int64_t from = 0;
    std::int64_t to = 0;
    if (!ReadInterval(call, interval) || !call.Date(1, from) || !call.Date(2, to) ||
        !FirstDay(call, 3, first)) {
        return call.error;
    }
    const DateTimeParts a = SplitTicks(from);
    const DateTimeParts b = SplitTicks(to);
    const std::int64_t passed = to - from;
    switch (interval) {
        case Year:
            return Value::Integer(b.year - a.year);
        case Quarter:
            return Value::Integer((b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3);
        case Month:
            return Value::Integer((b.year - a.year) * 12 + b.month - a.month);
        case WeekOfYear:
            return Value::Integer((StartOfWeek(to, first) - StartOfWeek(from, first)) / 7);
        case Weekday:
            return Value::Integer(passed / TicksPerDay / 7);
        case Hour:
            return Value::Integer(passed / TicksPerHour);
        case Minute:
            return Value::Integer(passed / TicksPerMinute);
        case Second:
            return Value::Integer(passed / TicksPerSecond);
        default:
            return Value::Integer(passed / TicksPerDay);
    }
}

// The week of the year: the first week is that of January 1 (1), the first with four days (2) or the first
// whole one (3).
int WeekNumber(std::int64_t ticks, int first, std::int64_t rule) {
    const DateTimeParts parts = SplitTicks(ticks);
    const int dayOfJanuary1 = ((parts.dayOfWeek - (parts.dayOfYear - 1)) % 7 + 7) % 7;
    const int offset = (dayOfJanuary1 - first + 7) % 7;
    if (rule <= 1) {
        return (parts.dayOfYear - 1 + offset) / 7 + 1;
    }
    const int least = rule == 2 ? 4 : 7;
    const int skipped = 7 - offset >= least ? 0 : 1;
    const int week = (parts.dayOfYear - 1 + offset) / 7 + 1 - skipped;
    if (week == 0) {
        const std::int64_t eve = MakeTicks(std::max(1, parts.year - 1), 12, 31);
        return eve < ticks ? WeekNumber(eve, first, rule) : 1;
    }
    if (rule == 2 && week == 53) {
        const int lastDay = (DaysInMonth(parts.year, 2) == 29 ? 366 : 365) - parts.dayOfYear;
        const int place = (parts.dayOfWeek - first + 7) % 7;
        return place + lastDay < 3 ? 1 : 53;
    }
    return week;
}

Value DatePart(const Call& call) {
    int interval = 0;
    int first = 0;
    std::int64_t ticks = 0;
    std::int64_t rule = 1;
    if (!ReadInterval(call, interval) || !call.Date(1, ticks) || !FirstDay(call, 2, first) ||
        (call.Has(3) && !call.Integer(3, rule))) {
        return call.error;
    }
    const DateTimeParts parts = SplitTicks(ticks);
    switch (interval) {
        case Year:
            return Value::Integer(parts.year);
        case Quarter:
            return Value::Integer((parts.month - 1) / 3 + 1);
        case Month:
            return Value::Integer(parts.month);
        case DayOfYear:
            return Value::Integer(parts.dayOfYear);
        case Day:
            return Value::Integer(parts.day);
        case WeekOfYear:
            return Value::Integer(WeekNumber(ticks, first, rule));
        case Weekday:
            return Value::Integer((parts.dayOfWeek - first + 7) % 7 + 1);
        case Hour:
            return Value::Integer(parts.hour);
        case Minute:
            return Value::Integer(parts.minute);
        default:
            return Value::Integer(parts.second);
    }
}

Value DateSerial(const Call& call) {
    std::int64_t year = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
    if (!call.Integer(0, year) || !call.Integer(1, month) || !call.Integer(2, day)) {
        return call.error;
    }
    std::int64_t result = 0;
    return FromTicks(SerialDate(year, month, day, result), result);
}

Value TimeSerial(const Call& call) {
    std::int64_t parts[3] = {};
    for (int i = 0; i < 3; ++i) {
        if (!call.Integer(i, parts[i])) {
            return call.error;
        }
        if (parts[i] < -4'000'000 || parts[i] > 4'000'000) {
            return DateOutOfRange();
        }
    }
    std::int64_t seconds = parts[0] * 3600 + parts[1] * 60 + parts[2];
    // Before midnight it is the evening's time.
    seconds = seconds < 0 ? (seconds % 86400 + 86400) % 86400 : seconds;
    return Value::DateTime(seconds * TicksPerSecond);
}

Value Now(const Call& call) {
    return Value::DateTime(call.environment.NowTicks());
}
Value Today(const Call& call) {
    const std::int64_t now = call.environment.NowTicks();
    return Value::DateTime(now - now % TicksPerDay);
}
Value TimeOfDay(const Call& call) {
    return Value::DateTime(call.environment.NowTicks() % TicksPerDay);
}
Value Timer(const Call& call) {
    return Value::Real(static_cast<double>(call.environment.NowTicks() % TicksPerDay) /
                       static_cast<double>(TicksPerSecond));
}
Value DateString(const Call& call) {
    return Value::Text(FormatValue(Now(call), "MM-dd-yyyy", FindCulture("")));
}
Value TimeString(const Call& call) {
    return Value::Text(FormatValue(Now(call), "HH:mm:ss", FindCulture("")));
}

Value DateValue(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::DateTime(ticks - ticks % TicksPerDay) : call.error;
}
Value TimeValue(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::DateTime(ticks % TicksPerDay) : call.error;
}

Value MonthName(const Call& call) {
    std::int64_t month = 0;
    bool brief = false;
    if (!call.Integer(0, month) || !call.Truth(1, brief)) {
        return call.error;
    }
    if (month < 1 || month > 12) {
        return Value::Error("There is no month " + std::to_string(month));
    }
    return Value::Text((brief ? call.culture().shortMonths : call.culture().months)[month - 1]);
}

Value WeekdayOf(const Call& call) {
    std::int64_t ticks = 0;
    int first = 0;
    if (!call.Date(0, ticks) || !FirstDay(call, 1, first)) {
        return call.error;
    }
    return Value::Integer((SplitTicks(ticks).dayOfWeek - first + 7) % 7 + 1);
}

// Without a first day the culture's week counts here, not Sunday's.
Value WeekdayName(const Call& call) {
    std::int64_t day = 0;
    bool brief = false;
    int first = call.culture().firstDayOfWeek;
    if (!call.Integer(0, day) || !call.Truth(1, brief) || (call.Has(2) && !FirstDay(call, 2, first))) {
        return call.error;
    }
    if (day < 1 || day > 7) {
        return Value::Error("There is no weekday " + std::to_string(day));
    }
    return Value::Text((brief ? call.culture().shortDays : call.culture().days)[(day - 1 + first) % 7]);
}

constexpr FunctionInfo functions[] = {
    {"dateadd", 3, 3, DateAdd},
    {"datediff", 3, 5, DateDiff},
    {"datepart", 2, 4, DatePart},
    {"dateserial", 3, 3, DateSerial},
    {"timeserial", 3, 3, TimeSerial},
    {"datevalue", 1, 1, DateValue},
    {"timevalue", 1, 1, TimeValue},
    {"datestring", 0, 0, DateString},
    {"timestring", 0, 0, TimeString},
    {"now", 0, 0, Now},
    {"datetime.now", 0, 0, Now},
    {"datetime.today", 0, 0, Today},
    {"date.now", 0, 0, Now},
    {"date.today", 0, 0, Today},
    {"today", 0, 0, Today},
    {"timeofday", 0, 0, TimeOfDay},
    {"timer", 0, 0, Timer},
    {"year", 1, 1, PartOf<&DateTimeParts::year>},
    {"month", 1, 1, PartOf<&DateTimeParts::month>},
    {"day", 1, 1, PartOf<&DateTimeParts::day>},
    {"hour", 1, 1, PartOf<&DateTimeParts::hour>},
    {"minute", 1, 1, PartOf<&DateTimeParts::minute>},
    {"second", 1, 1, PartOf<&DateTimeParts::second>},
    {"monthname", 1, 2, MonthName},
    {"weekday", 1, 2, WeekdayOf},
    {"weekdayname", 1, 3, WeekdayName},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> DateFunctions() {
    return functions;
}

}  // namespace rdl::expr
