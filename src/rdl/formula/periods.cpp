// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/periods.h"

#include <algorithm>

#include "rdl/expr/operations/date_arithmetic.h"
#include "rdl/formula/formula.h"
#include "rdl/values/named.h"

namespace rdl::formula {
namespace {

using Arguments = std::span<const Value>;

// Days since the first of the calendar.
struct Days {
    std::int64_t first, last;
};

constexpr std::int64_t FirstDay = 0, LastDay = MaxTicks / TicksPerDay;

std::int64_t DayOf(int year, int month, int day) {
    return MakeTicks(year, month, day) / TicksPerDay;
}
DateTimeParts PartsOf(std::int64_t day) {
    return SplitTicks(day * TicksPerDay);
}
std::int64_t SundayBefore(std::int64_t today) {
    return today - PartsOf(today).dayOfWeek;
}
std::int64_t YearEarlier(std::int64_t day) {
    std::int64_t ticks = 0;
    return expr::AddMonths(day * TicksPerDay, -12, ticks) ? ticks / TicksPerDay : 0;
}

template <int From, int To>
Days Around(std::int64_t today) {
    return {today + From, today + To};
}

template <int FirstMonth, int LastMonth>
Days Months(std::int64_t today) {
    const int year = PartsOf(today).year;
    return {DayOf(year, FirstMonth, 1), DayOf(year, LastMonth, rdl::DaysInMonth(year, LastMonth))};
}

Days MonthToDate(std::int64_t today) {
    const DateTimeParts parts = PartsOf(today);
    return {DayOf(parts.year, parts.month, 1), today};
}
Days YearToDate(std::int64_t today) {
    return {DayOf(PartsOf(today).year, 1, 1), today};
}
Days LastFullMonth(std::int64_t today) {
    const std::int64_t last = MonthToDate(today).first - 1;
    return {MonthToDate(std::max<std::int64_t>(last, 0)).first, last};
}
Days LastYearMonth(std::int64_t today) {
    return {YearEarlier(MonthToDate(today).first), YearEarlier(today)};
}
Days LastYearYear(std::int64_t today) {
    return {YearEarlier(YearToDate(today).first), YearEarlier(today)};
}
Days WeekToDate(std::int64_t today) {
    return {SundayBefore(today), today};
}
Days LastFullWeek(std::int64_t today) {
    return {SundayBefore(today) - 7, SundayBefore(today) - 1};
}
Days LastFourWeeks(std::int64_t today) {
    return {SundayBefore(today) - 27, SundayBefore(today)};
}
Days UntilToday(std::int64_t today) {
    return {FirstDay, today};
}
Days UntilYesterday(std::int64_t today) {
    return {FirstDay, today - 1};
}
Days FromToday(std::int64_t today) {
    return {today, LastDay};
}
Days FromTomorrow(std::int64_t today) {
    return {today + 1, LastDay};
}
Days OverNinety(std::int64_t today) {
    return {FirstDay, today - 91};
}

struct Period {
    std::string_view name;  // in lower case
    Days (*days)(std::int64_t today);
};
constexpr Period Periods[] = {
    {"weektodatefromsun", WeekToDate},
    {"monthtodate", MonthToDate},
    {"yeartodate", YearToDate},
    {"last7days", Around<-6, 0>},
    {"last4weekstosun", LastFourWeeks},
    {"lastfullweek", LastFullWeek},
    {"lastfullmonth", LastFullMonth},
    {"lastyearmtd", LastYearMonth},
    {"lastyearytd", LastYearYear},
    {"alldatestotoday", UntilToday},
    {"alldatestoyesterday", UntilYesterday},
    {"alldatesfromtoday", FromToday},
    {"alldatesfromtomorrow", FromTomorrow},
    {"aged0to30days", Around<-30, 0>},
    {"aged31to60days", Around<-60, -31>},
    {"aged61to90days", Around<-90, -61>},
    {"over90days", OverNinety},
    {"next30days", Around<0, 30>},
    {"next31to60days", Around<31, 60>},
    {"next61to90days", Around<61, 90>},
    {"next91to365days", Around<91, 365>},
    {"calendar1stqtr", Months<1, 3>},
    {"calendar2ndqtr", Months<4, 6>},
    {"calendar3rdqtr", Months<7, 9>},
    {"calendar4thqtr", Months<10, 12>},
    {"calendar1sthalf", Months<1, 6>},
    {"calendar2ndhalf", Months<7, 12>},
};
static_assert(NamesDiffer(Periods));

Days Of(Arguments arguments, Inputs& inputs) {
    return Periods[arguments[0].AsInteger()].days(inputs.NowTicks() / TicksPerDay);
}

Value Start(Arguments arguments, Inputs& inputs) {
    return Value::DateTime(std::clamp(Of(arguments, inputs).first, FirstDay, LastDay) * TicksPerDay);
}

// The whole last day belongs to the period.
Value End(Arguments arguments, Inputs& inputs) {
    return Value::DateTime((std::clamp(Of(arguments, inputs).last, FirstDay, LastDay) + 1) * TicksPerDay - 1);
}

}  // namespace

std::optional<int> FindPeriod(std::string_view name) {
    const Period* found = FindNamed(Periods, name);
    return found ? std::optional(static_cast<int>(found - Periods)) : std::nullopt;
}

std::vector<std::string_view> PeriodNames() {
    std::vector<std::string_view> names;
    for (const Period& period : Periods) {
        names.push_back(period.name);
    }
    return names;
}

const FunctionInfo& PeriodStart() {
    static constexpr FunctionInfo info{"", 1, 1, &Start, ""};
    return info;
}
const FunctionInfo& PeriodEnd() {
    static constexpr FunctionInfo info{"", 1, 1, &End, ""};
    return info;
}

}  // namespace rdl::formula
