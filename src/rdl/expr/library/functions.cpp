// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/library/functions.h"

#include <stdexcept>
#include <string>
#include <unordered_map>

#include "rdl/expr/library/collections.h"
#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

using Table = std::unordered_map<std::string_view, const FunctionInfo*>;

Table MakeTable() {
    Table table;
    for (const std::span<const FunctionInfo> functions : FunctionTables()) {
        for (const FunctionInfo& info : functions) {
            if (!table.emplace(info.name, &info).second) {
                throw std::logic_error("two functions have the name " + std::string(info.name));
            }
        }
    }
    return table;
}

}  // namespace

std::span<const std::span<const FunctionInfo>> FunctionTables() {
    static const std::span<const FunctionInfo> tables[] = {
        TextFunctions(),   SearchFunctions(),  FormatFunctions(),     DateFunctions(), DateTypeFunctions(),
        MathFunctions(),   ConvertFunctions(), FinancialFunctions(),  TextMembers(),   DateMembers(),
        ListFunctions(),   ArrayFunctions(),   InspectFunctions(),    TypeFunctions(), PatternFunctions(),
        EscapeFunctions(), ObjectFunctions(),  CollectionFunctions(),
    };
    return tables;
}

const FunctionInfo* FindFunction(std::string_view name) {
    static const Table table = MakeTable();
    const auto found = table.find(name);
    return found == table.end() ? nullptr : found->second;
}

std::string Call::Text(int index) const {
    return TextOf((*this)[index], culture());
}

bool Call::Number(int index, double& number) const {
    if (ToDouble((*this)[index], culture(), number)) {
        return true;
    }
    error = NoConversion((*this)[index], "a number");
    return false;
}

bool Call::Integer(int index, std::int64_t& number) const {
    double real = 0;
    if (!Number(index, real)) {
        return false;
    }
    if (!ToInteger((*this)[index], culture(), number)) {
        error = Value::Error("A number is too large");
        return false;
    }
    return true;
}

bool Call::Exact(int index, Decimal& number) const {
    if (ToDecimal((*this)[index], culture(), number)) {
        return true;
    }
    double real = 0;
    if (Number(index, real)) {
        error = Value::Error("A number is too large for its type");
    }
    return false;
}

bool Call::Date(int index, std::int64_t& ticks) const {
    if (ToDateTime((*this)[index], culture(), ticks)) {
        return true;
    }
    error = NoConversion((*this)[index], "a date");
    return false;
}

bool Call::Truth(int index, bool& truth) const {
    if (ToBoolean((*this)[index], culture(), truth)) {
        return true;
    }
    error = NoConversion((*this)[index], "a Boolean");
    return false;
}

}  // namespace rdl::expr
