// SPDX-License-Identifier: GPL-3.0-or-later
// A compiled expression: a tree of nodes that are evaluated.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "rdl/expr/language/expression.h"

namespace rdl::expr {

// The state of one evaluation. Its limits stop a hostile report from running or growing without end.
struct Machine {
    Environment& environment;
    Value* locals = nullptr;           // of the running function of report-level code
    std::int64_t steps = 5'000'000;    // statements and loop iterations left
    std::int64_t bytes = 256'000'000;  // of text and lists left
    int depth = 0;                     // stack use in nodes, counted at calls of code

    const Culture& culture() const { return environment.CurrentCulture(); }
    // Subtracts the size of `value` from `bytes`. Returns `value`, or an error once the limit is exceeded.
    Value Charged(Value value);
    // Charges steps for long text, so that code cannot repeat expensive work without end.
    void Weigh(const Value& value) {
        if (value.kind() == Kind::Text && value.AsText().size() > 1024) {
            steps -= static_cast<std::int64_t>(value.AsText().size() / 64);
        }
    }
};

struct Program::Node {
    virtual ~Node() = default;
    virtual Value Run(Machine& machine) const = 0;
    int depth = 1;  // of the subtree

    void Deepen(const Node& child) { depth = std::max(depth, child.depth + 1); }
};
using Node = Program::Node;
using NodePtr = std::unique_ptr<Program::Node>;

// Shorter texts are not counted: the limits on source and steps bound them.
inline constexpr std::size_t CountedText = 256;
inline constexpr std::int64_t CountedElement = 48;

inline Value Machine::Charged(Value value) {
    if (value.kind() == Kind::Text) {
        const std::size_t size = value.AsText().size();
        bytes -= size < CountedText ? 0 : static_cast<std::int64_t>(size);
    } else if (value.kind() == Kind::List) {
        bytes -= static_cast<std::int64_t>(value.AsList().size()) * CountedElement;
    }
    if (bytes < 0) {
        return Value::Error("The expression makes too much text");
    }
    return value;
}

}  // namespace rdl::expr
