// The statements of report-level code.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "rdl/expr/code/code_module.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/operators.h"

namespace rdl::expr {

// name = value, name += value; with an index an element of the list.
struct AssignStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Variable target;
    NodePtr index;                 // null: the whole variable
    Operator operation = nullptr;  // of += and its like
    NodePtr value;                 // null: the first value of the type

 private:
    Flow Store(Value result, Frame& frame) const;
    Flow StoreElement(Value result, std::int64_t place, Frame& frame) const;
};

// object.Member = value, object.Item(index) = value
struct MemberStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr object;
    std::string_view member;       // as FindFunction has it
    NodePtr index;                 // null: none
    Operator operation = nullptr;  // of += and its like
    NodePtr value;
};

// With: the object is worked out once, and the names with a leading point belong to it.
struct WithStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Variable target;
    NodePtr object;
    Block body;
};

// Dim a(n), ReDim [Preserve] a(n)
struct SizeStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Variable target;
    NodePtr upper;
    bool preserve = false;
};

// A call whose result nobody takes.
struct CallStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr call;
};

struct ReturnStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr value;  // null: what was assigned so far
    const FunctionInfo* conversion = nullptr;
};

// Exit, Continue.
struct JumpStatement final : Statement {
    explicit JumpStatement(Flow where) : flow(where) {}
    Flow Run(Frame&) const override { return flow; }
    Flow flow;
};

struct IfStatement final : Statement {
    Flow Run(Frame& frame) const override;
    std::vector<std::pair<NodePtr, Block>> branches;
    Block otherwise;
};

struct CaseTest {
    Comparison comparison = Comparison::Equal;
    NodePtr value;
    NodePtr upper;  // value To upper
};

struct SelectStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr value;
    std::vector<std::pair<std::vector<CaseTest>, Block>> cases;
    Block otherwise;

 private:
    bool Matches(const CaseTest& test, const Value& selected, Frame& frame) const;
};

struct ForStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Variable counter;
    NodePtr from, to, step;  // step: null for 1
    Block body;
};

struct ForEachStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Variable element;
    NodePtr list;
    Block body;
};

// While and Do: a condition in front, behind, or neither.
struct LoopStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr condition;
    bool until = false, atEnd = false;
    bool isDo = false;  // which Exit and Continue are meant for it
    Block body;
};

// The first clause whose condition holds takes a fault, of whatever kind it is.
struct CatchClause {
    std::optional<Variable> message;  // holds why, while it is caught
    NodePtr condition;                // Catch When; null: always
    Block body;
};

struct TryStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Block body, finally;
    std::vector<CatchClause> clauses;

 private:
    Flow Catch(Frame& frame) const;
};

struct ThrowStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr message;
};

}  // namespace rdl::expr
