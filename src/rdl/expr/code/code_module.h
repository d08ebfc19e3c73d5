// What report-level code is once it is read: functions made of statements, and the variables they share.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rdl/expr/language/variables.h"

namespace rdl::expr {

struct CodeFunction;

// How running goes on behind a statement.
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
    int cost = 1;  // steps, by its length
};
using Block = std::vector<std::unique_ptr<Statement>>;

struct CodeParameter {
    const FunctionInfo* conversion = nullptr;
    NodePtr missing;  // its value when it is left out; null: it must be given
    bool byReference = false, rest = false;
};

struct CodeFunction {
    std::string name;
    std::vector<CodeParameter> parameters;  // in slots from 1; slot 0 is the result
    const FunctionInfo* conversion = nullptr;
    int slots = 1;
    int depth = 1;  // what a call of it takes of the stack, in nodes
    Block body;
};

struct CodeModule {
    std::map<std::string, std::unique_ptr<CodeFunction>> functions;  // by small letters
    std::map<std::string, Variable> variables;
    std::vector<Value> values;
    Block start;  // gives the variables their first values
    bool started = false;
    int startDepth = 1;
    std::int64_t steps = 0;                         // left for the whole report
    bool pageGlobals = false, reportItems = false;  // asked for by some function
};

// A call of a function of the code.
struct CodeCallNode final : Node {
    CodeCallNode(CodeModule& owner, const CodeFunction& what, std::vector<NodePtr> values);
    Value Run(Machine& machine) const override;
    // Empty, or why the arguments do not fit.
    std::string Fault() const;

    CodeModule& module;
    const CodeFunction& function;
    std::vector<NodePtr> arguments;

 private:
    bool Gather(Machine& machine, std::vector<Value>& locals, Value& fault) const;
    Value Call(Machine& machine) const;
};

// A variable of the module, from an expression.
struct ModuleVariableNode final : Node {
    ModuleVariableNode(CodeModule& owner, const Variable& which) : module(owner), variable(which) {}
    Value Run(Machine& machine) const override;
    CodeModule& module;
    Variable variable;
};

// What stays for the rest of the report is small, however often a function is called.
bool MayStay(const Value& value);
// Whether there are steps left; takes them.
bool TakeSteps(Frame& frame, int cost);
Flow RunBlock(const Block& block, Frame& frame);

}  // namespace rdl::expr
