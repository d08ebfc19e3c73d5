// Values on their way to a database driver and back.
#pragma once

#include <QSqlField>
#include <QVariant>

#include "rdl/data/common/provider.h"
#include "rdl/values/value.h"

namespace rdl::data {

// A value as a bind. Dates carry no zone: what the server compares with must not depend on where this runs.
QVariant ToVariant(const Value& value, ProviderKind provider);

// Whether the driver gives the column's numbers as texts because they may have more digits than a double.
bool IsDecimalColumn(const QSqlField& field, ProviderKind provider);
// `isDecimal`: the text of a decimal column becomes a number, whole ones exactly.
Value OfVariant(const QVariant& variant, bool isDecimal);

}  // namespace rdl::data
