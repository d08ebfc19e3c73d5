// Aggregates over all rows of a data set, for its own filters.
#pragma once

#include <functional>

#include "platform/rdl/expr/expression.h"
#include "platform/rdl/value.h"

namespace rdl::data {

// `argument` gives the value of a row; it is not called for CountRows. Null and error as the report language
// has them: Null does not count, an error is the result. Kinds that depend on the order of groups are an
// error here.
Value Aggregate(expr::AggregateKind kind, std::size_t rows, const std::function<Value(std::size_t)>& argument,
                const Culture& culture);

}  // namespace rdl::data
