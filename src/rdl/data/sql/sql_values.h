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

// Whether the driver returns the column's numbers as texts because they may have more digits than a double.
bool IsDecimalColumn(const QSqlField& field, ProviderKind provider);
// With `isDecimal` a text becomes a number; integers stay exact.
Value OfVariant(const QVariant& variant, bool isDecimal);

}  // namespace rdl::data
