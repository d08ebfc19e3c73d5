// What a compiled expression is made of: a tree of nodes that are run.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "rdl/expr/language/expression.h"

namespace rdl::expr {

// One evaluation. The limits keep a hostile report from running or growing without end.
struct Machine {
    Environment& environment;
    Value* locals = nullptr;           // of the function of report-level code that runs
    std::int64_t steps = 5'000'000;    // statements and loop turns of code that are left
    std::int64_t bytes = 256'000'000;  // of text and lists that may still be made
    int depth = 0;                     // nodes on the stack, counted when code is called

    const Culture& culture() const { return environment.CurrentCulture(); }
    // The value itself, or an error once too much has been made.
    Value Charged(Value value);
    // Work on long text takes steps, so that code cannot repeat it without end.
    void Weigh(const Value& value) {
        if (value.kind() == Kind::Text && value.AsText().size() > 1024) {
            steps -= static_cast<std::int64_t>(value.AsText().size() / 64);
        }
    }
};

struct Program::Node {
    virtual ~Node() = default;
    virtual Value Run(Machine& machine) const = 0;
    int depth = 1;  // of the tree from here

    void Deepen(const Node& child) { depth = std::max(depth, child.depth + 1); }
};
using Node = Program::Node;
using NodePtr = std::unique_ptr<Program::Node>;

// Text shorter than this is not worth counting: the limits on source and steps bound it.
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
