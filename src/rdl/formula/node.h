// SPDX-License-Identifier: GPL-3.0-or-later
// A formula as a syntax tree. A chain of and, of or, or of list elements is one node, which keeps the tree
// shallow.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "rdl/formula/function_table.h"
#include "rdl/values/value.h"

namespace rdl::formula {

enum class NodeKind : std::uint8_t {
    Constant,
    Field,
    Parameter,
    Call,
    And,
    Or,
    Xor,
    Not,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    In,      // left, then a Choice
    Choice,  // the list after in: elements and Ranges
    Range,   // from, to
    Like,
    StartsWith,
    IsNull,
    Concatenate,
    Add,
    Subtract,
    Multiply,
    Divide,
    DivideWhole,
    Modulo,
    Power,
    Negate,
    If,  // condition, then, else
};

struct Node {
    NodeKind kind = NodeKind::Constant;
    int index = 0;  // Field, Parameter
    Value value;    // Constant
    const FunctionInfo* function = nullptr;
    std::vector<std::unique_ptr<Node>> children;
    int depth = 1;
    std::size_t position = 0;  // of its first character, from 0
};
using NodePtr = std::unique_ptr<Node>;

// Evaluates a tree.
class Inputs;
Value EvaluateNode(const Node& node, Inputs& inputs);

}  // namespace rdl::formula
