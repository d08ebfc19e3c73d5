// SPDX-License-Identifier: GPL-3.0-or-later
// Members of dates and time spans: .Year, .AddDays(1), .TotalHours ...
#include <cmath>
#include <string>

#include "rdl/expr/library/date_parts.h"
#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/date_arithmetic.h"
#include "rdl/expr/operations/operators.h"

namespace rdl::expr {
namespace {

constexpr std::int64_t TicksPerHour = 36'000'000'000, TicksPerMinute = 600'000'000,
                       TicksPerMillisecond = 10'000;

// Parts that dates and time spans both have: a span's carry its sign.
template <std::int64_t Unit, std::int64_t Whole, int DateTimeParts::*Part>
Value SharedPart(const Call& call) {
    if (call[0].kind() == Kind::TimeSpan) {
        return Value::Integer(call[0].AsTicks() / Unit % (Whole / Unit));
    }
    return PartOf<Part>(call);
}

Value Days(const Call& call) {
    return call[0].kind() == Kind::TimeSpan ? Value::Integer(call[0].AsTicks() / TicksPerDay)
                                            : NoConversion(call[0], "a time span");
}

Value Milliseconds(const Call& call) {
    if (call[0].kind() == Kind::TimeSpan) {
        return Value::Integer(call[0].AsTicks() / TicksPerMillisecond % 1000);
    }
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::Integer(ticks / TicksPerMillisecond % 1000) : call.error;
}

template <std::int64_t Unit>
Value Total(const Call& call) {
    if (call[0].kind() != Kind::TimeSpan) {
        return NoConversion(call[0], "a time span");
    }
    return Value::Real(static_cast<double>(call[0].AsTicks()) / static_cast<double>(Unit));
}

Value Ticks(const Call& call) {
    const Kind kind = call[0].kind();
    return kind == Kind::TimeSpan || kind == Kind::DateTime ? Value::Integer(call[0].AsTicks())
                                                            : NoConversion(call[0], "a date");
}

template <std::int64_t Unit>
Value AddUnit(const Call& call) {
    std::int64_t ticks = 0;
    double count = 0;
    if (!call.Date(0, ticks) || !call.Number(1, count)) {
        return call.error;
    }
    std::int64_t result = 0;
    return AddUnits(ticks, count, Unit, result) ? Value::DateTime(result) : DateOutOfRange();
}

template <int Each>
Value AddMonth(const Call& call) {
    std::int64_t ticks = 0;
    std::int64_t count = 0;
    if (!call.Date(0, ticks) || !call.Integer(1, count)) {
        return call.error;
    }
    std::int64_t result = 0;
    const bool possible = count > -200000 && count < 200000 && AddMonths(ticks, count * Each, result);
    return possible ? Value::DateTime(result) : DateOutOfRange();
}

// The name of the enumeration's member, in no culture's language.
Value DayOfWeekName(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::Text(FindCulture("").days[SplitTicks(ticks).dayOfWeek]) : call.error;
}

Value AddSpan(const Call& call) {
    if (call.count() > 2) {
        return Value::Error("Only one value is added to a date");
    }
    return Add(call[0], call[1], call.culture());
}
Value SubtractSpan(const Call& call) {
    return Subtract(call[0], call[1], call.culture());
}

Value DatePartOnly(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::DateTime(ticks - ticks % TicksPerDay) : call.error;
}

Value TimeOfDay(const Call& call) {
    std::int64_t ticks = 0;
    return call.Date(0, ticks) ? Value::TimeSpan(ticks % TicksPerDay) : call.error;
}

template <char Letter>
Value ToPattern(const Call& call) {
    std::int64_t ticks = 0;
    constexpr char format[] = {Letter, '\0'};
    return call.Date(0, ticks) ? Value::Text(FormatValue(Value::DateTime(ticks), format, call.culture()))
                               : call.error;
}

Value Duration(const Call& call) {
    if (call[0].kind() != Kind::TimeSpan) {
        return NoConversion(call[0], "a time span");
    }
    return call[0].AsTicks() < 0 ? Negate(call[0], call.culture()) : call[0];
}

Value NegateSpan(const Call& call) {
    return call[0].kind() == Kind::TimeSpan ? Negate(call[0], call.culture())
                                            : NoConversion(call[0], "a time span");
}

constexpr FunctionInfo functions[] = {
    {".year", 1, 1, PartOf<&DateTimeParts::year>},
    {".month", 1, 1, PartOf<&DateTimeParts::month>},
    {".day", 1, 1, PartOf<&DateTimeParts::day>},
    {".hour", 1, 1, PartOf<&DateTimeParts::hour>},
    {".minute", 1, 1, PartOf<&DateTimeParts::minute>},
    {".second", 1, 1, PartOf<&DateTimeParts::second>},
    {".millisecond", 1, 1, Milliseconds},
    {".dayofweek", 1, 1, PartOf<&DateTimeParts::dayOfWeek>},
    {".dayofweek.tostring", 1, 1, DayOfWeekName},
    {".dayofyear", 1, 1, PartOf<&DateTimeParts::dayOfYear>},
    {".date", 1, 1, DatePartOnly},
    {".timeofday", 1, 1, TimeOfDay},
    {".ticks", 1, 1, Ticks},
    {".adddays", 2, 2, AddUnit<TicksPerDay>},
    {".addhours", 2, 2, AddUnit<TicksPerHour>},
    {".addminutes", 2, 2, AddUnit<TicksPerMinute>},
    {".addseconds", 2, 2, AddUnit<TicksPerSecond>},
    {".addmilliseconds", 2, 2, AddUnit<TicksPerMillisecond>},
    {".addticks", 2, 2, AddUnit<1>},
    {".addmonths", 2, 2, AddMonth<1>},
    {".addyears", 2, 2, AddMonth<12>},
    {".add", 2, 3, AddSpan},
    {".subtract", 2, 2, SubtractSpan},
    {".days", 1, 1, Days},
    {".hours", 1, 1, SharedPart<TicksPerHour, TicksPerDay, &DateTimeParts::hour>},
    {".minutes", 1, 1, SharedPart<TicksPerMinute, TicksPerHour, &DateTimeParts::minute>},
    {".seconds", 1, 1, SharedPart<TicksPerSecond, TicksPerMinute, &DateTimeParts::second>},
    {".milliseconds", 1, 1, Milliseconds},
    {".totaldays", 1, 1, Total<TicksPerDay>},
    {".totalhours", 1, 1, Total<TicksPerHour>},
    {".totalminutes", 1, 1, Total<TicksPerMinute>},
    {".totalseconds", 1, 1, Total<TicksPerSecond>},
    {".totalmilliseconds", 1, 1, Total<TicksPerMillisecond>},
    {".duration", 1, 1, Duration},
    {".negate", 1, 1, NegateSpan},
    {".toshortdatestring", 1, 1, ToPattern<'d'>},
    {".tolongdatestring", 1, 1, ToPattern<'D'>},
    {".toshorttimestring", 1, 1, ToPattern<'t'>},
    {".tolongtimestring", 1, 1, ToPattern<'T'>},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> DateMembers() {
    return functions;
}

}  // namespace rdl::expr
