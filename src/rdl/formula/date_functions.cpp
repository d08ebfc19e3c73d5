// SPDX-License-Identifier: GPL-3.0-or-later
// Dates and times of the formula language.
#include <algorithm>
#include <cmath>

#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/date_arithmetic.h"
#include "rdl/formula/formula.h"
#include "rdl/formula/function_table.h"
#include "rdl/values/named.h"

namespace rdl::formula {
namespace {

using Arguments = std::span<const Value>;

bool PartOf(const Value& value, Inputs& inputs, double& number) {
    return expr::ToDouble(value, inputs.CurrentCulture(), number);
}

Value CurrentDate(Arguments, Inputs& inputs) {
    return Value::DateTime(inputs.NowTicks() / TicksPerDay * TicksPerDay);
}

Value CurrentDateTime(Arguments, Inputs& inputs) {
    return Value::DateTime(inputs.NowTicks());
}

Value NoDate(const Value& value, Inputs& inputs) {
    return Value::Error("\"" + expr::TextOf(value, inputs.CurrentCulture()).substr(0, 40) + "\" is no date");
}

Value DateOf(Arguments arguments, Inputs& inputs, bool withTime) {
    std::int64_t ticks = 0;
    if (arguments.size() == 1) {
        if (!expr::ToDateTime(arguments[0], inputs.CurrentCulture(), ticks)) {
            return NoDate(arguments[0], inputs);
        }
        return Value::DateTime(withTime ? ticks : ticks / TicksPerDay * TicksPerDay);
    }
    std::int64_t parts[6] = {0, 1, 1, 0, 0, 0};
    for (std::size_t i = 0; i < std::min<std::size_t>(arguments.size(), 6); ++i) {
        double number = 0;
        if (!PartOf(arguments[i], inputs, number) || std::abs(number) > 1e6) {
            return NoNumber(arguments[i], inputs);
        }
        parts[i] = static_cast<std::int64_t>(number);
    }
    const std::int64_t seconds = parts[3] * 3600 + parts[4] * 60 + parts[5];
    if (arguments.size() == 2 || !expr::SerialDate(parts[0], parts[1], parts[2], ticks) ||
        !expr::AddTicks(ticks, seconds * TicksPerSecond, ticks)) {
        return Value::Error("a date lies outside the calendar");
    }
    return Value::DateTime(ticks);
}

Value Date(Arguments arguments, Inputs& inputs) {
    return DateOf(arguments, inputs, false);
}

Value DateTime(Arguments arguments, Inputs& inputs) {
    return DateOf(arguments, inputs, true);
}

Value CurrentTime(Arguments, Inputs& inputs) {
    return Value::DateTime(inputs.NowTicks() % TicksPerDay);
}

// Time(hours, minutes, seconds) or the time of a date or text: a moment of the calendar's first day.
Value Time(Arguments arguments, Inputs& inputs) {
    std::int64_t ticks = 0;
    if (arguments.size() == 1) {
        return expr::ToDateTime(arguments[0], inputs.CurrentCulture(), ticks)
                   ? Value::DateTime(ticks % TicksPerDay)
                   : NoDate(arguments[0], inputs);
    }
    const double most[] = {23, 59, 59};
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        double part = 0;
        if (!PartOf(arguments[i], inputs, part)) {
            return NoNumber(arguments[i], inputs);
        }
        if (part < 0 || part > most[i]) {
            return Value::Error("there is no such time of day");
        }
        ticks = ticks * 60 + static_cast<std::int64_t>(part);
    }
    return arguments.size() == 3 ? Value::DateTime(ticks * TicksPerSecond)
                                 : Value::Error("a time takes hours, minutes and seconds");
}

Value IsDate(Arguments arguments, Inputs& inputs) {
    std::int64_t ticks = 0;
    return Value::Boolean(expr::ToDateTime(arguments[0], inputs.CurrentCulture(), ticks));
}

constexpr FunctionInfo OfDates[] = {
    {"year", 1, 1, nullptr, "year"},
    {"month", 1, 1, nullptr, "month"},
    {"day", 1, 1, nullptr, "day"},
    {"hour", 1, 1, nullptr, "hour"},
    {"minute", 1, 1, nullptr, "minute"},
    {"second", 1, 1, nullptr, "second"},
    {"dayofweek", 1, 2, nullptr, "weekday"},
    {"weekday", 1, 2, nullptr, "weekday"},
    {"dateadd", 3, 3, nullptr, "dateadd"},
    {"datediff", 3, 4, nullptr, "datediff"},
    {"datepart", 2, 4, nullptr, "datepart"},
    {"date", 1, 3, &Date, ""},
    {"cdate", 1, 3, &Date, ""},
    {"datevalue", 1, 3, &Date, ""},
    {"dateserial", 3, 3, &Date, ""},
    {"datetime", 1, 6, &DateTime, ""},
    {"cdatetime", 1, 6, &DateTime, ""},
    {"datetimevalue", 1, 6, &DateTime, ""},
    {"currentdate", 0, 0, &CurrentDate, ""},
    {"today", 0, 0, &CurrentDate, ""},
    {"currentdatetime", 0, 0, &CurrentDateTime, ""},
    {"now", 0, 0, &CurrentDateTime, ""},
    {"monthname", 1, 2, nullptr, "monthname"},
    {"weekdayname", 1, 3, nullptr, "weekdayname"},
    {"time", 1, 3, &Time, ""},
    {"ctime", 1, 3, &Time, ""},
    {"timevalue", 1, 3, &Time, ""},
    {"timeserial", 3, 3, &Time, ""},
    {"currenttime", 0, 0, &CurrentTime, ""},
    {"isdate", 1, 1, &IsDate, ""},
    {"isdatetime", 1, 1, &IsDate, ""},
};
static_assert(NamesDiffer(OfDates));

}  // namespace

std::span<const FunctionInfo> DateFunctions() {
    return OfDates;
}

}  // namespace rdl::formula
