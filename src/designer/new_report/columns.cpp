// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/columns.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <set>

#include "designer/new_report/part_names.h"
#include "designer/new_report/refusal.h"
#include "designer/new_report/text_width.h"
#include "platform/base/ascii.h"
#include "platform/base/caption.h"
#include "platform/base/text.h"

namespace designer {
namespace {

constexpr int MostDecimals = 6;

// What the values of a column have in common.
struct Traits {
    bool any = false, whole = true, number = true, exact = true, date = true, time = false, boolean = true,
         bytes = false;
    int decimals = 0;
    double largest = 0;  // without its sign
};

bool HasForm(std::string_view text, std::string_view form) {
    return text.size() == form.size() &&
           std::equal(text.begin(), text.end(), form.begin(), [](char c, char f) {
               return f == '0' ? IsAsciiDigit(c) : f == 'T' ? c == 'T' || c == ' ' : c == f;
           });
}

// Whether the text is a date by ISO 8601, as databases without a type for dates store them. `time` becomes
// true if it has a time of the day.
bool IsDateText(std::string_view text, bool& time) {
    constexpr std::string_view Day = "0000-00-00";
    if (!HasForm(text.substr(0, Day.size()), Day)) {
        return false;
    }
    const std::string_view month = text.substr(5, 2), day = text.substr(8, 2), rest = text.substr(Day.size());
    const bool isDay =
        month >= "01" && month <= "12" && day >= "01" && day <= "31" && text.substr(0, 4) > "0000";
    const bool isTime = HasForm(rest, "T00:00") || HasForm(rest.substr(0, 9), "T00:00:00");
    time = time || (isTime && rest.find_first_of("123456789") != std::string_view::npos);
    return isDay && (rest.empty() || isTime);
}

int DecimalsOf(double number) {
    double scaled = std::abs(number);
    int decimals = 0;
    while (decimals < MostDecimals && std::abs(scaled - std::round(scaled)) > 1e-9 * std::max(1.0, scaled)) {
        scaled *= 10;
        ++decimals;
    }
    return decimals;
}

void Consider(const rdl::Value& value, Traits& traits) {
    using rdl::Kind;
    if (value.IsNull()) {
        return;
    }
    const Kind kind = value.kind();
    traits.any = true;
    traits.whole = traits.whole && kind == Kind::Integer;
    traits.number = traits.number && value.IsNumber();
    traits.exact = traits.exact && kind != Kind::Real;
    traits.boolean = traits.boolean && kind == Kind::Boolean;
    traits.bytes = traits.bytes || kind == Kind::Bytes;
    if (kind == Kind::DateTime) {
        traits.time = traits.time || value.AsTicks() % rdl::TicksPerDay != 0;
    } else {
        traits.date = traits.date && value.IsText() && IsDateText(value.AsText(), traits.time);
    }
    if (value.IsNumber() && kind != Kind::Integer) {
        traits.decimals = std::max(traits.decimals, DecimalsOf(value.AsDouble()));
        traits.largest = std::max(traits.largest, std::abs(value.AsDouble()));
    }
}

// Whole numbers of such a column are not counted, and have no separators: OrderID, order_no, Year.
bool IsNameOfCode(std::string_view column) {
    const std::string caption = ToLower(CaptionOf(column));
    const std::string_view word = std::string_view(caption).substr(caption.find_last_of(' ') + 1);
    constexpr std::array Words = {"id", "no", "nr", "number", "code", "key", "year", "zip", "postcode"};
    return std::find(Words.begin(), Words.end(), word) != Words.end();
}

void TakeKind(const Traits& traits, ReportColumn& column) {
    if (traits.bytes) {
        column.kind = ColumnKind::Bytes;
        column.typeName = "System.Byte[]";
    } else if (traits.any && traits.boolean) {
        column.kind = ColumnKind::Boolean;
        column.typeName = "System.Boolean";
    } else if (traits.any && traits.date) {
        column.kind = traits.time ? ColumnKind::Moment : ColumnKind::Date;
        column.typeName = "System.DateTime";
    } else if (traits.any && traits.whole) {
        column.kind = IsNameOfCode(column.name) ? ColumnKind::Code : ColumnKind::Whole;
        column.typeName = "System.Int64";
    } else if (traits.any && traits.number) {
        column.kind = ColumnKind::Number;
        // Small numbers are rates and factors, larger ones amounts.
        column.decimals = traits.largest < 10 ? std::clamp(traits.decimals, 2, MostDecimals) : 2;
        // The sums of numbers with few decimals are exact.
        column.typeName = traits.exact || traits.decimals <= 4 ? "System.Decimal" : "System.Double";
    } else {
        column.typeName = "System.String";
    }
}

std::string WithSeparators(double number, int decimals) {
    std::array<char, 400> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    const std::size_t first = text.starts_with('-') ? 1 : 0;
    for (std::size_t at = std::min(text.find('.'), text.size()); at > first + 3;) {
        at -= 3;
        text.insert(at, ",");
    }
    return text;
}

// Returns the text as wide as a report shows the value.
std::string Shown(const rdl::Value& value, const ReportColumn& column) {
    switch (column.kind) {
        case ColumnKind::Date:
            return "00/00/0000";
        case ColumnKind::Moment:
            return "00/00/0000 00:00 AM";
        case ColumnKind::Boolean:
            return "False";
        case ColumnKind::Code:
            return std::to_string(value.AsInteger());
        case ColumnKind::Whole:
        case ColumnKind::Number:
            return WithSeparators(value.AsDouble(), column.decimals);
        default:
            break;
    }
    return value.IsNumber() ? WithSeparators(value.AsDouble(), 2)
           : value.IsText() ? std::string(value.AsText())
                            : "00/00/0000";
}

void Measure(const rdl::QueryRows& rows, std::size_t index, ReportColumn& column) {
    std::set<std::string> texts;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        const rdl::Value& value = rows.At(row, index);
        column.hasNulls = column.hasNulls || value.IsNull();
        if (!value.IsNull() && column.kind != ColumnKind::Bytes) {
            const std::string shown = Shown(value, column);
            column.widest = std::max(column.widest, WidthOf(shown));
            column.widestWord = std::max(
                column.widestWord, column.kind == ColumnKind::Text ? WidthOfWord(shown) : WidthOf(shown));
            texts.insert(value.kind() == rdl::Kind::DateTime ? std::to_string(value.AsTicks()) : shown);
        }
    }
    column.different = texts.size();
}

// A report file keeps names of columns as texts of XML, which readers trim.
bool IsKept(const std::string& name) {
    return IsUtf8(name) && !HasControls(name) && Trim(name).size() == name.size();
}

void CheckNames(const std::vector<ReportColumn>& columns) {
    std::set<std::string> known;
    for (const ReportColumn& column : columns) {
        const std::string& name = column.name;
        if (!IsKept(name)) {
            Refuse("The column \"" + ValidUtf8(WithoutControls(name)) +
                   "\" needs another name: without control characters, and without blanks at its ends");
        }
        if (!known.insert(ToLower(name)).second) {
            Refuse("The query gives two columns \"" + name + "\": each needs a name of its own");
        }
    }
}

// The lines of some files end in a separator, which gives a column without name and values.
void RefuseValues(const Traits& traits, std::size_t index) {
    if (traits.any) {
        Refuse("The column " + std::to_string(index + 1) + " of the query has values, but no name");
    }
}

}  // namespace

std::vector<ReportColumn> ColumnsOf(const rdl::QueryRows& rows) {
    std::vector<ReportColumn> columns;
    Names fields;
    for (std::size_t index = 0; index < rows.columns.size(); ++index) {
        Traits traits;
        for (std::size_t row = 0; row < rows.RowCount(); ++row) {
            Consider(rows.At(row, index), traits);
        }
        if (rows.columns[index].empty()) {
            RefuseValues(traits, index);
            continue;
        }
        ReportColumn& column = columns.emplace_back();
        column.name = rows.columns[index];
        column.field = fields.Add(column.name);
        TakeKind(traits, column);
        column.isTypeKnown = traits.any;
        if (!traits.any && index < rows.types.size() && !rows.types[index].empty()) {
            column.typeName = rows.types[index];
            column.isTypeKnown = true;
        }
        Measure(rows, index, column);
    }
    if (columns.empty()) {
        Refuse("The query gives no columns");
    }
    CheckNames(columns);
    return columns;
}

std::string FormatOf(const ReportColumn& column) {
    switch (column.kind) {
        case ColumnKind::Whole:
            return "N0";
        case ColumnKind::Number:
            return "N" + std::to_string(column.decimals);
        case ColumnKind::Date:
            return "d";
        case ColumnKind::Moment:
            return "g";
        default:
            return {};
    }
}

}  // namespace designer
