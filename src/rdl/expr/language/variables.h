// SPDX-License-Identifier: GPL-3.0-or-later
// Variables of report-level code: their storage, and the nodes that read and set them.
#pragma once

#include <optional>
#include <vector>

#include "rdl/expr/language/node.h"
#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// The storage of a variable: a slot in a function's frame or in the module.
struct Variable {
    int slot = 0;
    std::vector<Value>* module = nullptr;      // null: in the function's frame
    const FunctionInfo* conversion = nullptr;  // conversion to its type; null for Object
    bool constant = false;

    Value& In(Machine& machine) const {
        return module ? (*module)[static_cast<std::size_t>(slot)] : machine.locals[slot];
    }
};

struct VariableNode final : Node {
    explicit VariableNode(const Variable& which) : variable(which) {}
    Value Run(Machine& machine) const override { return variable.In(machine); }
    Variable variable;
};

// Returns whether a text can be parsed as a type and stores the parsed value in the variable.
struct TryParseNode final : Node {
    TryParseNode(const FunctionInfo& how, const FunctionInfo* type, NodePtr value);
    Value Run(Machine& machine) const override;
    const FunctionInfo& parse;
    const FunctionInfo* conversion;
    NodePtr text;
    std::optional<Variable> target;
};

// Converts a value to a type. Null stays Null if the type is String.
Value ConvertTo(const FunctionInfo* conversion, const Value& value, Machine& machine);

}  // namespace rdl::expr
