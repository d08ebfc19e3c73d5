// SPDX-License-Identifier: GPL-3.0-or-later
// Named constants of the language and of its library.
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

using Table = std::unordered_map<std::string_view, const Value*>;
using List = std::vector<NamedConstant>;

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
    {"varianttype.empty", 0},
    {"varianttype.null", 1},
    {"varianttype.short", 2},
    {"varianttype.integer", 3},
    {"varianttype.single", 4},
    {"varianttype.double", 5},
    {"varianttype.currency", 6},
    {"varianttype.date", 7},
    {"varianttype.string", 8},
    {"varianttype.object", 9},
    {"varianttype.error", 10},
    {"varianttype.boolean", 11},
    {"varianttype.decimal", 14},
    {"varianttype.byte", 17},
    {"varianttype.char", 18},
    {"varianttype.long", 20},
    {"varianttype.userdefinedtype", 36},
    {"varianttype.array", 8192},
    {"vbempty", 0},
    {"vbnull", 1},
    {"vbinteger", 3},
    {"vbsingle", 4},
    {"vbdouble", 5},
    {"vbcurrency", 6},
    {"vbdate", 7},
    {"vbstring", 8},
    {"vbobject", 9},
    {"vbboolean", 11},
    {"vbdecimal", 14},
    {"vbbyte", 17},
    {"vblong", 20},
    {"vbarray", 8192},
    {"vbobjecterror", -2147221504},
    {"regexoptions.none", 0},
    {"regexoptions.ignorecase", 1},
    {"regexoptions.multiline", 2},
    {"regexoptions.singleline", 16},
    {"regexoptions.ignorepatternwhitespace", 32},
    {"numberstyles.any", 511},
    {"numberstyles.number", 111},
    {"numberstyles.integer", 7},
    {"numberstyles.float", 167},
    {"numberstyles.currency", 383},
    {"datetimestyles.none", 0},
    {"dayofweek.sunday", 0},
    {"dayofweek.monday", 1},
    {"dayofweek.tuesday", 2},
    {"dayofweek.wednesday", 3},
    {"dayofweek.thursday", 4},
    {"dayofweek.friday", 5},
    {"dayofweek.saturday", 6},
};
static_assert(NamesDiffer(Numbers));

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
    {"stringcomparison.currentculture", "CurrentCulture"},
    {"stringcomparison.currentcultureignorecase", "CurrentCultureIgnoreCase"},
    {"stringcomparison.invariantculture", "InvariantCulture"},
    {"stringcomparison.invariantcultureignorecase", "InvariantCultureIgnoreCase"},
    {"stringcomparison.ordinal", "Ordinal"},
    {"stringcomparison.ordinalignorecase", "OrdinalIgnoreCase"},
    {"stringsplitoptions.none", ""},
    {"stringsplitoptions.removeemptyentries", "RemoveEmptyEntries"},
    {"boolean.truestring", "True"},
    {"boolean.falsestring", "False"},
};
static_assert(NamesDiffer(Texts));

template <typename T>
void AddLimits(List& list, std::initializer_list<std::pair<std::string_view, std::string_view>> names) {
    for (const auto& [least, most] : names) {
        list.push_back({least, Value::Integer(static_cast<std::int64_t>(std::numeric_limits<T>::min()))});
        list.push_back({most, Value::Integer(static_cast<std::int64_t>(std::numeric_limits<T>::max()))});
    }
}

// The constants whose values the two tables above cannot hold.
List OtherConstants() {
    constexpr std::string_view nul("\0", 1);
    List list = {
        {"vbnullchar", Value::Text(nul)},
        {"controlchars.nullchar", Value::Text(nul)},
        {"dbnull.value", Value()},
        {"math.pi", Value::Real(3.141592653589793)},
        {"math.e", Value::Real(2.718281828459045)},
        {"single.maxvalue", Value::Real(std::numeric_limits<float>::max())},
        {"single.minvalue", Value::Real(std::numeric_limits<float>::lowest())},
        {"decimal.maxvalue", Value::Decimal({Decimal::MostCoefficient, 0, false})},
        {"decimal.minvalue", Value::Decimal({Decimal::MostCoefficient, 0, true})},
        {"decimal.zero", Value::Decimal(Decimal::OfInteger(0))},
        {"decimal.one", Value::Decimal(Decimal::OfInteger(1))},
        {"decimal.minusone", Value::Decimal(Decimal::OfInteger(-1))},
        {"double.epsilon", Value::Real(std::numeric_limits<double>::denorm_min())},
        {"double.maxvalue", Value::Real(std::numeric_limits<double>::max())},
        {"double.minvalue", Value::Real(std::numeric_limits<double>::lowest())},
        {"double.nan", Value::Real(std::numeric_limits<double>::quiet_NaN())},
        {"double.positiveinfinity", Value::Real(std::numeric_limits<double>::infinity())},
        {"double.negativeinfinity", Value::Real(-std::numeric_limits<double>::infinity())},
        {"datetime.minvalue", Value::DateTime(0)},
        {"date.minvalue", Value::DateTime(0)},
        {"datetime.maxvalue", Value::DateTime(MaxTicks)},
        {"date.maxvalue", Value::DateTime(MaxTicks)},
        {"timespan.zero", Value::TimeSpan(0)},
        {"timespan.maxvalue", Value::TimeSpan(std::numeric_limits<std::int64_t>::max())},
        {"timespan.minvalue", Value::TimeSpan(std::numeric_limits<std::int64_t>::min())},
        {"timespan.ticksperday", Value::Integer(TicksPerDay)},
        {"timespan.ticksperhour", Value::Integer(TicksPerDay / 24)},
        {"timespan.ticksperminute", Value::Integer(TicksPerSecond * 60)},
        {"timespan.tickspersecond", Value::Integer(TicksPerSecond)},
        {"timespan.tickspermillisecond", Value::Integer(TicksPerSecond / 1000)},
    };
    AddLimits<std::int32_t>(list,
                            {{"integer.minvalue", "integer.maxvalue"}, {"int32.minvalue", "int32.maxvalue"}});
    AddLimits<std::int64_t>(list, {{"long.minvalue", "long.maxvalue"}, {"int64.minvalue", "int64.maxvalue"}});
    AddLimits<std::int16_t>(list,
                            {{"short.minvalue", "short.maxvalue"}, {"int16.minvalue", "int16.maxvalue"}});
    AddLimits<std::uint8_t>(list, {{"byte.minvalue", "byte.maxvalue"}});
    AddLimits<std::int8_t>(list, {{"sbyte.minvalue", "sbyte.maxvalue"}});
    AddLimits<std::uint16_t>(list, {{"ushort.minvalue", "ushort.maxvalue"}});
    AddLimits<std::uint32_t>(list, {{"uinteger.minvalue", "uinteger.maxvalue"}});
    return list;
}

List MakeList() {
    List list = OtherConstants();
    for (const Number& number : Numbers) {
        list.push_back({number.name, Value::Integer(number.value)});
    }
    for (const Text& text : Texts) {
        list.push_back({text.name, Value::Text(text.value)});
    }
    return list;
}

Table MakeTable() {
    Table table;
    for (const NamedConstant& constant : Constants()) {
        table.emplace(constant.name, &constant.value);
    }
    return table;
}

}  // namespace

const std::vector<NamedConstant>& Constants() {
    static const List list = MakeList();
    return list;
}

const Value* FindConstant(std::string_view name) {
    static const Table table = MakeTable();
    const auto found = table.find(name);
    return found == table.end() ? nullptr : found->second;
}

}  // namespace rdl::expr
