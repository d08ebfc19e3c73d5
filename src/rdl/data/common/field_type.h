// SPDX-License-Identifier: GPL-3.0-or-later
// Field types as reports and databases name them, and conversion to them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::data {

enum class FieldType : std::uint8_t { Untyped, Boolean, Integer, Real, Decimal, DateTime, Text, Bytes };

// Returns the type of System.Int32, Integer, Float, System.DateTime, Date and so on; Untyped for an unknown
// name.
FieldType FieldTypeOfName(std::string_view typeName);
// Returns the type of a declared database column if its values alone do not show it: dates, Booleans
// and exact numbers (numeric, decimal, money); else Untyped.
FieldType FieldTypeOfColumn(std::string_view declared);

// Returns the type of a declared column that holds nothing else as a rule, by the words that SQLite looks
// for: INT, CHAR, CLOB, TEXT, BLOB, REAL, FLOA, DOUB, and those of FieldTypeOfColumn; else Untyped.
FieldType FieldTypeOfDeclaration(std::string_view declared);
// Returns System.Int64 and so on; empty for Untyped.
std::string_view NameOfFieldType(FieldType type);

// Converts a value of an untyped source: texts are parsed by the type, 0 and 1 become Booleans. A value that
// does not fit is returned unchanged; digits that are too many for a Decimal make a Real.
Value ConvertValue(const Value& value, FieldType type);
// The same for a column that SQLite declares so; there numbers are dates too: integers are seconds since
// 1970, reals are Julian days. SQLite stores exact numbers as doubles, of which 15 digits count.
Value ConvertStored(const Value& value, FieldType type);

// Returns 2024-02-29, with a time and a fraction only if they are not zero: databases without a date type
// compare dates as texts, and most hold no time.
std::string IsoText(std::int64_t ticks);

}  // namespace rdl::data
