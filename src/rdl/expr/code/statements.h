// SPDX-License-Identifier: GPL-3.0-or-later
// The statements of report-level code.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "rdl/expr/code/module.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/operators.h"

namespace rdl::expr {

// name = value, name += value; with an index, assignment to a list element.
struct AssignStatement final : Statement {
    Flow Run(Frame& frame) const override;
    Variable target;
    NodePtr index;                 // null: the whole variable
    Operator operation = nullptr;  // for += and similar; null for =
    NodePtr value;                 // null: the type's initial value

 private:
    Flow Store(Value result, Frame& frame) const;
    Flow StoreElement(Value result, std::int64_t place, Frame& frame) const;
};

// object.Member = value, object.Item(index) = value
struct MemberStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr object;
    std::string_view member;       // in the form FindFunction takes
    NodePtr index;                 // null: no index
    Operator operation = nullptr;  // for += and similar; null for =
    NodePtr value;
};

// With: evaluates the object once; names with a leading point are its members.
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

// A call whose result is discarded.
struct CallStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr call;
};

struct ReturnStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr value;  // null: returns the value assigned to the function's name
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

// While and Do: the condition is tested before, after or never.
struct LoopStatement final : Statement {
    Flow Run(Frame& frame) const override;
    NodePtr condition;
    bool until = false, atEnd = false;
    bool isDo = false;  // whether Exit Do or Exit While applies
    Block body;
};

// The first clause whose condition holds catches the fault, whatever its kind.
struct CatchClause {
    std::optional<Variable> message;  // holds the message inside the clause
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
