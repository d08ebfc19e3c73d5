// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/sql_values.h"

#include <QDateTime>
#include <limits>
#include <string_view>

#include "rdl/data/common/field_type.h"
#include "rdl/format/format.h"
#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

// Types as the drivers number them.
constexpr int PostgresNumeric = 1700, PostgresMoney = 790;
constexpr int MySqlDecimal = 0, MySqlNewDecimal = 246;
constexpr int OdbcNumeric = 2, OdbcDecimal = 3;

QVariant OfMoment(std::int64_t ticks, ProviderKind provider) {
    // PostgreSQL's driver makes a moment of one zone out of it; a text becomes what it is compared with.
    if (provider == ProviderKind::PostgreSql) {
        return QString::fromStdString(IsoText(ticks));
    }
    const DateTimeParts parts = SplitTicks(ticks);
    // UTC has no hour that is left out in spring.
    return QDateTime(QDate(parts.year, parts.month, parts.day),
                     QTime(parts.hour, parts.minute, parts.second, parts.fraction / 10'000), Qt::UTC);
}

// Local times that a clock change leaves out are no valid QDateTime, but date and time stand in it all the
// same.
Value OfDateTime(const QDate& day, const QTime& time) {
    if (!day.isValid() || day.year() < 1 || day.year() > 9999) {
        return {};
    }
    return Value::DateTime(
        MakeTicks(day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()) +
        time.msec() * (TicksPerSecond / 1000));
}

Value OfUnsigned(qulonglong number) {
    return number <= static_cast<qulonglong>(std::numeric_limits<qlonglong>::max())
               ? Value::Integer(static_cast<std::int64_t>(number))
               : Value::Real(static_cast<double>(number));
}

// PostgreSQL writes sums of money as its region does: $1,234.50, -1.234,50 €, ($5.00). The last mark is the
// decimal point unless it occurs twice, or is the only one and has three digits after it.
std::string PlainMoney(std::string_view shown) {
    constexpr std::string_view Digits = "0123456789";
    const std::size_t first = shown.find_first_of(Digits);
    if (first == std::string_view::npos) {
        return {};
    }
    const std::string_view text = shown.substr(first, shown.find_last_of(Digits) + 1 - first);
    std::size_t point = text.find_last_of(".,");
    if (point != std::string_view::npos) {
        const bool isRepeated = text.find(text[point]) != point;
        const bool isAlone = text.find_first_of(".,") == point;
        point = isRepeated || (isAlone && text.size() - point == 4) ? std::string_view::npos : point;
    }
    std::string plain = shown.find_first_of("-(") == std::string_view::npos ? "" : "-";
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsAsciiDigit(text[i])) {
            plain += text[i];
        } else if (i == point) {
            plain += '.';
        }
    }
    return plain;
}

// MySQL compares a text with other columns than it would a number. Drivers of ODBC write 17 digits of a
// double, which is another number to the server: 0.10000000000000001.
QVariant OfDecimal(const Decimal& number, ProviderKind provider) {
    constexpr UInt128 MostOfDouble = 999'999'999'999'999;
    const bool isOdbc = provider == ProviderKind::Odbc || provider == ProviderKind::SqlServer;
    return isOdbc || number.Coefficient() > MostOfDouble ? QVariant(QString::fromStdString(number.Text()))
                                                         : QVariant(number.ToDouble());
}

}  // namespace

QVariant ToVariant(const Value& value, ProviderKind provider) {
    switch (value.kind()) {
        case Kind::Boolean:
            return value.AsBoolean();
        case Kind::Integer:
            return QVariant::fromValue<qlonglong>(value.AsInteger());
        case Kind::Real:
            return value.AsReal();
        case Kind::Decimal:
            return OfDecimal(value.AsDecimal(), provider);
        case Kind::DateTime:
            return OfMoment(value.AsTicks(), provider);
        case Kind::TimeSpan:
            return QString::fromStdString(ToText(value, FindCulture("")));
        case Kind::Text:
            return QString::fromUtf8(value.AsText());
        case Kind::Bytes:
            return QByteArray(value.AsText().data(), static_cast<qsizetype>(value.AsText().size()));
        default:
            return {};
    }
}

bool IsDecimalColumn(const QSqlField& field, ProviderKind provider) {
    switch (provider) {
        case ProviderKind::PostgreSql:
            return field.typeID() == PostgresNumeric || field.typeID() == PostgresMoney;
        case ProviderKind::MySql:
            return field.typeID() == MySqlNewDecimal || field.typeID() == MySqlDecimal;
        default:
            return field.typeID() == OdbcNumeric || field.typeID() == OdbcDecimal;
    }
}

Value OfVariant(const QVariant& variant, bool isDecimal) {
    if (variant.isNull()) {
        return {};
    }
    switch (variant.typeId()) {
        case QMetaType::Bool:
            return Value::Boolean(variant.toBool());
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
            return Value::Integer(variant.toLongLong());
        case QMetaType::ULong:
        case QMetaType::ULongLong:
            return OfUnsigned(variant.toULongLong());
        case QMetaType::Float:
        case QMetaType::Double:
            return Value::Real(variant.toDouble());
        case QMetaType::QDate:
            return OfDateTime(variant.toDate(), QTime(0, 0));
        case QMetaType::QDateTime: {
            const QDateTime moment = variant.toDateTime();
            return OfDateTime(moment.date(), moment.time());
        }
        case QMetaType::QTime:
            return Value::TimeSpan(static_cast<std::int64_t>(variant.toTime().msecsSinceStartOfDay()) *
                                   10'000);
        case QMetaType::QByteArray: {
            const QByteArray bytes = variant.toByteArray();
            return Value::Bytes({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        }
        default: {
            const std::string text = variant.toString().toStdString();
            if (!isDecimal) {
                return Value::Text(text);
            }
            // A number as it stands (1E+20), else one with a currency and grouping.
            const Value exact = ConvertValue(Value::Text(text), FieldType::Decimal);
            const Value money =
                exact.IsNumber() ? exact : ConvertValue(Value::Text(PlainMoney(text)), FieldType::Decimal);
            return money.IsNumber() ? money : Value::Text(text);
        }
    }
}

}  // namespace rdl::data
