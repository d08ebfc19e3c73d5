// SPDX-License-Identifier: GPL-3.0-or-later
// Report-level code in compiled form: functions made of statements, and the variables that they share.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rdl/expr/language/variables.h"

namespace rdl::expr {

struct CodeFunction;

// Where execution continues after a statement.
enum class Flow {
    Next,
    ExitFor,
    ExitDo,
    ExitWhile,
    ExitSelect,
    ContinueFor,
    ContinueDo,
    ContinueWhile,
    Return,
    Fault
};

struct Frame {
    Machine& machine;
    Value fault;  // set with Flow::Fault
};

struct Statement {
    virtual ~Statement() = default;
    virtual Flow Run(Frame& frame) const = 0;
    int cost = 1;  // in steps, by the length of its source
};
using Block = std::vector<std::unique_ptr<Statement>>;

struct CodeParameter {
    const FunctionInfo* conversion = nullptr;
    NodePtr missing;  // default value; null: the argument is required
    bool byReference = false, rest = false;
};

struct CodeFunction {
    std::string name;
    std::vector<CodeParameter> parameters;  // in slots from 1; slot 0 is the result
    const FunctionInfo* conversion = nullptr;
    int slots = 1;
    int depth = 1;  // stack use of a call, in nodes
    Block body;
};

struct CodeModule {
    std::map<std::string, std::unique_ptr<CodeFunction>> functions;  // by name in lower case
    std::map<std::string, Variable> variables;
    std::vector<Value> values;
    Block start;  // initializes the variables
    bool started = false;
    int startDepth = 1;
    std::int64_t steps = 0;                         // steps left for the whole report
    bool pageGlobals = false, reportItems = false;  // used by some function
};

// A call to a function of the code.
struct CodeCallNode final : Node {
    CodeCallNode(CodeModule& owner, const CodeFunction& what, std::vector<NodePtr> values);
    Value Run(Machine& machine) const override;
    // Returns why the arguments do not match the parameters; empty if they do.
    std::string Fault() const;

    CodeModule& module;
    const CodeFunction& function;
    std::vector<NodePtr> arguments;

 private:
    bool Gather(Machine& machine, std::vector<Value>& locals, Value& fault) const;
    Value Call(Machine& machine) const;
};

// Reads a module variable from an expression.
struct ModuleVariableNode final : Node {
    ModuleVariableNode(CodeModule& owner, const Variable& which) : module(owner), variable(which) {}
    Value Run(Machine& machine) const override;
    CodeModule& module;
    Variable variable;
};

// Whether a module variable may keep the value. Only small values may outlive a call, so that memory does not
// grow with the number of calls.
bool MayStay(const Value& value);
// Subtracts `cost` steps. Returns false if none are left.
bool TakeSteps(Frame& frame, int cost);
Flow RunBlock(const Block& block, Frame& frame);

}  // namespace rdl::expr
