// SPDX-License-Identifier: GPL-3.0-or-later
// Node types used by expressions and report-level code.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/expr/language/node.h"
#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/operators.h"

namespace rdl::expr {

struct LiteralNode final : Node {
    explicit LiteralNode(Value v) : value(std::move(v)) {}
    Value Run(Machine&) const override { return value; }
    Value value;
};

struct FieldNode final : Node {
    explicit FieldNode(int fieldSlot) : slot(fieldSlot) {}
    Value Run(Machine& machine) const override { return machine.environment.Field(slot); }
    int slot;
};

struct BinaryNode final : Node {
    BinaryNode(Operator op, NodePtr l, NodePtr r);
    Value Run(Machine& machine) const override;
    Operator operation;
    NodePtr left, right;
};

struct UnaryNode final : Node {
    using Operation = Value (*)(const Value&, const Culture&);
    UnaryNode(Operation op, NodePtr value);
    Value Run(Machine& machine) const override { return operation(operand->Run(machine), machine.culture()); }
    Operation operation;
    NodePtr operand;
};

// A chain of & operators, concatenated at once.
struct ConcatenateNode final : Node {
    void Add(NodePtr part);
    Value Run(Machine& machine) const override;
    std::vector<NodePtr> parts;
};

// AndAlso and OrElse: evaluates the right side only if it decides.
struct ShortCircuitNode final : Node {
    ShortCircuitNode(bool stopsAt, NodePtr l, NodePtr r);
    Value Run(Machine& machine) const override;
    bool stop;
    NodePtr left, right;
};

// IIf and If: evaluates only the selected branch.
struct ConditionNode final : Node {
    ConditionNode(NodePtr test, NodePtr yes, NodePtr no);
    Value Run(Machine& machine) const override;
    NodePtr condition, whenTrue, whenFalse;
};

// If(a, b): the first value unless it is Null.
struct CoalesceNode final : Node {
    CoalesceNode(NodePtr value, NodePtr instead);
    Value Run(Machine& machine) const override;
    NodePtr first, second;
};

// Pairs of a condition and a value.
struct SwitchNode final : Node {
    explicit SwitchNode(std::vector<NodePtr> pairs);
    Value Run(Machine& machine) const override;
    std::vector<NodePtr> parts;
};

// The first part is the index of the result among the others, from 1.
struct ChooseNode final : Node {
    explicit ChooseNode(std::vector<NodePtr> values);
    Value Run(Machine& machine) const override;
    std::vector<NodePtr> parts;
};

struct CallNode final : Node {
    CallNode(const FunctionInfo& what, std::vector<NodePtr> values);
    Value Run(Machine& machine) const override;
    const FunctionInfo& info;
    std::vector<NodePtr> arguments;
};

// A new object with initial values, each passed to its Add method.
struct FillNode final : Node {
    FillNode(NodePtr object, const FunctionInfo& how);
    void Add(std::vector<NodePtr> values);
    Value Run(Machine& machine) const override;
    NodePtr made;
    const FunctionInfo& add;
    std::vector<std::vector<NodePtr>> rows;
};

// { a, b, c }
struct ListNode final : Node {
    explicit ListNode(std::vector<NodePtr> values);
    Value Run(Machine& machine) const override;
    std::vector<NodePtr> parts;
};

// value(index): a list element or a character of a text. A scalar counts as a list of one.
struct IndexNode final : Node {
    IndexNode(NodePtr value, NodePtr at);
    Value Run(Machine& machine) const override;
    NodePtr target, index;
};

}  // namespace rdl::expr
