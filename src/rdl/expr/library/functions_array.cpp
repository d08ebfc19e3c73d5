// SPDX-License-Identifier: GPL-3.0-or-later
// Functions of the class Array that give a list in another order.
#include <algorithm>
#include <utility>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

// A copy in order, or in the other order: code gives it back to its variable.
Value ArraySort(const Call& call) {
    if (call[0].kind() != Kind::List) {
        return NoConversion(call[0], "a list");
    }
    ValueList values = call[0].AsList();
    std::stable_sort(values.begin(), values.end(),
                     [](const Value& left, const Value& right) { return Compare(left, right) < 0; });
    return Value::List(std::move(values));
}

Value ArrayReverse(const Call& call) {
    return call[0].kind() == Kind::List
               ? Value::List(ValueList(call[0].AsList().rbegin(), call[0].AsList().rend()))
               : NoConversion(call[0], "a list");
}

constexpr FunctionInfo functions[] = {
    {"array.sort", 1, 1, ArraySort},
    {"array.reverse", 1, 1, ArrayReverse},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> ArrayFunctions() {
    return functions;
}

}  // namespace rdl::expr
