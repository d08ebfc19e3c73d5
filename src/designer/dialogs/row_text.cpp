// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/row_text.h"

#include <QDateTime>
#include <algorithm>

#include "designer/new_report/source_text.h"

namespace designer {
namespace {

using rdl::Kind;

std::string MomentText(std::int64_t ticks) {
    constexpr std::int64_t PerMillisecond = rdl::TicksPerSecond / 1000;
    const QDate day = QDate(1, 1, 1).addDays(ticks / rdl::TicksPerDay);
    const std::int64_t rest = ticks % rdl::TicksPerDay;
    const QString text = day.toString(Qt::ISODate);
    if (rest == 0) {
        return text.toStdString();
    }
    const QTime time = QTime::fromMSecsSinceStartOfDay(static_cast<int>(rest / PerMillisecond));
    return (text + " " + time.toString(time.msec() == 0 ? "HH:mm:ss" : "HH:mm:ss.zzz")).toStdString();
}

}  // namespace

const char* WordOf(Kind kind) {
    switch (kind) {
        case Kind::Boolean:
            return "Boolean";
        case Kind::Integer:
            return "Whole number";
        case Kind::Real:
            return "Number";
        case Kind::Decimal:
            return "Decimal";
        case Kind::DateTime:
            return "Date";
        case Kind::TimeSpan:
            return "Time";
        case Kind::Bytes:
            return "Bytes";
        default:
            return "Text";
    }
}

std::string TextOf(const rdl::Value& value) {
    switch (value.kind()) {
        case Kind::Boolean:
            return value.AsBoolean() ? "True" : "False";
        case Kind::Integer:
            return std::to_string(value.AsInteger());
        case Kind::Real:
            return QString::number(value.AsReal(), 'g', QLocale::FloatingPointShortest).toStdString();
        case Kind::Decimal:
            return value.AsDecimal().Text();
        case Kind::DateTime:
            return MomentText(value.AsTicks());
        case Kind::TimeSpan:
            return QTime::fromMSecsSinceStartOfDay(
                       static_cast<int>(value.AsTicks() % rdl::TicksPerDay / (rdl::TicksPerSecond / 1000)))
                .toString("HH:mm:ss")
                .toStdString();
        case Kind::Text:
            return std::string(value.AsText());
        default:
            return {};
    }
}

std::string TypeOf(const rdl::QueryRows& rows, std::size_t column) {
    std::string type;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        const rdl::Value& value = rows.At(row, column);
        if (value.IsNull()) {
            continue;
        }
        const std::string own = WordOf(value.kind());
        if (!type.empty() && own != type) {
            return "Mixed";
        }
        type = own;
    }
    return type;
}

std::string CsvOf(const rdl::QueryRows& rows, const std::vector<std::string>& headings,
                  std::size_t mostRows) {
    std::string text;
    const auto addLine = [&](const auto& cellOf) {
        const char* between = "";
        for (std::size_t column = 0; column < headings.size(); ++column) {
            if (!headings[column].empty()) {
                text += between + cellOf(column);
                between = ",";
            }
        }
        text += "\r\n";
    };
    addLine([&](std::size_t column) { return InQuotes(headings[column], "\"", "\""); });
    for (std::size_t row = 0; row < std::min(mostRows, rows.RowCount()); ++row) {
        addLine([&](std::size_t column) {
            const rdl::Value& value = rows.At(row, column);
            return value.IsText() ? InQuotes(value.AsText(), "\"", "\"") : TextOf(value);
        });
    }
    return text;
}

}  // namespace designer
