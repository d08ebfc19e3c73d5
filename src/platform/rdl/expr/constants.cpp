// Named constants of the language and of its library.
#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

#include "platform/rdl/expr/convert.h"
#include "platform/rdl/expr/functions.h"

namespace rdl::expr {
namespace {

using Table = std::unordered_map<std::string_view, Value>;

struct Number {
    std::string_view name;
    int value;
};

constexpr Number Numbers[] = {
    {"dateinterval.year", 0},
    {"dateinterval.quarter", 1},
    {"dateinterval.month", 2},
    {"dateinterval.dayofyear", 3},
    {"dateinterval.day", 4},
    {"dateinterval.weekofyear", 5},
    {"dateinterval.weekday", 6},
    {"dateinterval.hour", 7},
    {"dateinterval.minute", 8},
    {"dateinterval.second", 9},
    {"dateformat.generaldate", 0},
    {"dateformat.longdate", 1},
    {"dateformat.shortdate", 2},
    {"dateformat.longtime", 3},
    {"dateformat.shorttime", 4},
    {"vbgeneraldate", 0},
    {"vblongdate", 1},
    {"vbshortdate", 2},
    {"vblongtime", 3},
    {"vbshorttime", 4},
    {"comparemethod.binary", 0},
    {"comparemethod.text", 1},
    {"vbbinarycompare", 0},
    {"vbtextcompare", 1},
    {"firstdayofweek.system", 0},
    {"firstdayofweek.sunday", 1},
    {"firstdayofweek.monday", 2},
    {"firstdayofweek.tuesday", 3},
    {"firstdayofweek.wednesday", 4},
    {"firstdayofweek.thursday", 5},
    {"firstdayofweek.friday", 6},
    {"firstdayofweek.saturday", 7},
    {"vbusesystem", 0},
    {"vbusesystemdayofweek", 0},
    {"vbsunday", 1},
    {"vbmonday", 2},
    {"vbtuesday", 3},
    {"vbwednesday", 4},
    {"vbthursday", 5},
    {"vbfriday", 6},
    {"vbsaturday", 7},
    {"firstweekofyear.system", 0},
    {"firstweekofyear.jan1", 1},
    {"firstweekofyear.firstfourdays", 2},
    {"firstweekofyear.firstfullweek", 3},
    {"vbfirstjan1", 1},
    {"vbfirstfourdays", 2},
    {"vbfirstfullweek", 3},
    {"tristate.usedefault", -2},
    {"tristate.true", -1},
    {"tristate.false", 0},
    {"vbusedefault", -2},
    {"vbtrue", -1},
    {"vbfalse", 0},
    {"vbstrconv.none", 0},
    {"vbstrconv.uppercase", 1},
    {"vbstrconv.lowercase", 2},
    {"vbstrconv.propercase", 3},
    {"vbuppercase", 1},
    {"vblowercase", 2},
    {"vbpropercase", 3},
    {"duedate.endofperiod", 0},
    {"duedate.begofperiod", 1},
    {"dayofweek.sunday", 0},
    {"dayofweek.monday", 1},
    {"dayofweek.tuesday", 2},
    {"dayofweek.wednesday", 3},
    {"dayofweek.thursday", 4},
    {"dayofweek.friday", 5},
    {"dayofweek.saturday", 6},
};

struct Text {
    std::string_view name, value;
};

constexpr Text Texts[] = {
    {"vbcrlf", "\r\n"},
    {"vbnewline", "\r\n"},
    {"vbcr", "\r"},
    {"vblf", "\n"},
    {"vbtab", "\t"},
    {"vbback", "\b"},
    {"vbformfeed", "\f"},
    {"vbverticaltab", "\v"},
    {"vbnullstring", ""},
    {"controlchars.crlf", "\r\n"},
    {"controlchars.newline", "\r\n"},
    {"controlchars.cr", "\r"},
    {"controlchars.lf", "\n"},
    {"controlchars.tab", "\t"},
    {"controlchars.back", "\b"},
    {"controlchars.formfeed", "\f"},
    {"controlchars.verticaltab", "\v"},
    {"controlchars.quote", "\""},
    {"environment.newline", "\r\n"},
    {"string.empty", ""},
    {"midpointrounding.awayfromzero", "AwayFromZero"},
    {"midpointrounding.toeven", "ToEven"},
};

Table MakeTable() {
    Table table;
    for (const Number& number : Numbers) {
        table.emplace(number.name, Value::Integer(number.value));
    }
    for (const Text& text : Texts) {
        table.emplace(text.name, Value::Text(text.value));
    }
    constexpr std::string_view nul("\0", 1);
    table.emplace("vbnullchar", Value::Text(nul));
    table.emplace("controlchars.nullchar", Value::Text(nul));
    table.emplace("dbnull.value", Value());
    table.emplace("math.pi", Value::Real(3.141592653589793));
    table.emplace("math.e", Value::Real(2.718281828459045));
    table.emplace("integer.maxvalue", Value::Integer(std::numeric_limits<std::int32_t>::max()));
    table.emplace("integer.minvalue", Value::Integer(std::numeric_limits<std::int32_t>::min()));
    table.emplace("int32.maxvalue", Value::Integer(std::numeric_limits<std::int32_t>::max()));
    table.emplace("int32.minvalue", Value::Integer(std::numeric_limits<std::int32_t>::min()));
    table.emplace("long.maxvalue", Value::Integer(std::numeric_limits<std::int64_t>::max()));
    table.emplace("long.minvalue", Value::Integer(std::numeric_limits<std::int64_t>::min()));
    table.emplace("double.maxvalue", Value::Real(std::numeric_limits<double>::max()));
    table.emplace("double.minvalue", Value::Real(std::numeric_limits<double>::lowest()));
    table.emplace("double.nan", Value::Real(std::numeric_limits<double>::quiet_NaN()));
    table.emplace("double.positiveinfinity", Value::Real(std::numeric_limits<double>::infinity()));
    table.emplace("double.negativeinfinity", Value::Real(-std::numeric_limits<double>::infinity()));
    table.emplace("datetime.minvalue", Value::DateTime(0));
    table.emplace("date.minvalue", Value::DateTime(0));
    table.emplace("datetime.maxvalue", Value::DateTime(MaxTicks));
    table.emplace("date.maxvalue", Value::DateTime(MaxTicks));
    table.emplace("timespan.zero", Value::TimeSpan(0));
    return table;
}

}  // namespace

const Value* FindConstant(std::string_view name) {
    static const Table table = MakeTable();
    const auto found = table.find(name);
    return found == table.end() ? nullptr : &found->second;
}

}  // namespace rdl::expr
