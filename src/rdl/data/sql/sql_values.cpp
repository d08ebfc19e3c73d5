// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/sql_values.h"

#include <QDateTime>
#include <limits>

#include "rdl/data/common/field_type.h"
#include "rdl/format/format.h"

namespace rdl::data {
namespace {

// Types as the drivers number them.
constexpr int PostgresNumeric = 1700;
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

// Without a point the column has no decimals: sums and keys of any size that fits stay exact.
Value OfDecimal(const std::string& text) {
    const bool isWhole = text.find('.') == std::string::npos;
    return ConvertValue(Value::Text(text), isWhole ? FieldType::Integer : FieldType::Real);
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
            return field.typeID() == PostgresNumeric;
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
            return isDecimal ? OfDecimal(text) : Value::Text(text);
        }
    }
}

}  // namespace rdl::data
