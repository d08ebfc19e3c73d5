// Variables of report-level code: where a name keeps its value, and the nodes that read and fill it.
#pragma once

#include <optional>
#include <vector>

#include "rdl/expr/language/node.h"
#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// A name with a place for its value: of a function's frame, or of the module.
struct Variable {
    int slot = 0;
    std::vector<Value>* module = nullptr;      // null: in the frame
    const FunctionInfo* conversion = nullptr;  // of its type; null for Object
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

// Whether a text can be read as a type; the variable then holds what was read.
struct TryParseNode final : Node {
    TryParseNode(const FunctionInfo& how, const FunctionInfo* type, NodePtr value);
    Value Run(Machine& machine) const override;
    const FunctionInfo& parse;
    const FunctionInfo* conversion;
    NodePtr text;
    std::optional<Variable> target;
};

// A value as a type has it; null stays null where the type is a text.
Value ConvertTo(const FunctionInfo* conversion, const Value& value, Machine& machine);

}  // namespace rdl::expr
