// SPDX-License-Identifier: GPL-3.0-or-later
// Converts values for a database driver and back.
#pragma once

#include <QSqlField>
#include <QVariant>

#include "rdl/data/common/provider.h"
#include "rdl/values/value.h"

namespace rdl::data {

// Returns a value as a bind. Dates have no zone: comparisons on the server must not depend on this machine's
// zone.
QVariant ToVariant(const Value& value, ProviderKind provider);

// Whether the column has exact numbers: numeric, decimal, money. The driver returns them as texts.
bool IsDecimalColumn(const QSqlField& field, ProviderKind provider);
// With `isDecimal` a text becomes a Decimal, or a Real if it has too many digits.
Value OfVariant(const QVariant& variant, bool isDecimal);

}  // namespace rdl::data
