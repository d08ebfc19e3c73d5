// Types of fields, as reports and databases name them, and values brought to them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::data {

enum class FieldType : std::uint8_t { Untyped, Boolean, Integer, Real, DateTime, Text, Bytes };

// System.Int32, Integer, Float, System.DateTime, Date ...; Untyped for an unknown name.
FieldType FieldTypeOfName(std::string_view typeName);
// Of a column as the database declares it, where its values alone do not tell: dates and truth values.
FieldType FieldTypeOfColumn(std::string_view declared);

// A value of a source that knows only texts and numbers: texts are read as the type says, 0 and 1 are truth
// values. What does not fit stays as it is.
Value ConvertValue(const Value& value, FieldType type);
// The same for a column that SQLite declares as a date or truth value; numbers are dates there as well, whole
// ones seconds since 1970, others days of the Julian calendar.
Value ConvertStored(const Value& value, FieldType type);

// 2024-02-29, or 2024-02-29 13:05:00 when there is a time, with a fraction only where there is one: dates in
// databases without a date type compare as texts, and most hold no time.
std::string IsoText(std::int64_t ticks);

}  // namespace rdl::data
