// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/code/module.h"

#include <algorithm>
#include <utility>

namespace rdl::expr {
namespace {

constexpr std::size_t MaxKept = 1u << 20;  // bytes of a variable that outlives its call
constexpr int MaxStack = 3000;             // nodes of all functions that wait for one another

// Runs `work` with its own frame of locals, out of the report's steps.
template <typename Work>
Value WithFrame(CodeModule& module, Machine& machine, int depth, std::vector<Value>& locals, Work work) {
    if (machine.depth + depth > MaxStack) {
        return Value::Error("Functions of the report call one another too deeply");
    }
    const bool outermost = machine.depth == 0;
    const std::int64_t allowed = std::min(machine.steps, module.steps);
    if (outermost) {
        machine.steps = allowed;
    }
    Value* const outer = std::exchange(machine.locals, locals.data());
    machine.depth += depth;
    Frame frame{machine, {}};
    const Flow flow = work(frame);
    machine.depth -= depth;
    machine.locals = outer;
    if (outermost) {
        module.steps -= allowed - machine.steps;
    }
    return flow == Flow::Fault ? frame.fault : Value();
}

Value Start(CodeModule& module, Machine& machine) {
    if (module.started) {
        return {};
    }
    module.started = true;
    std::vector<Value> none(1);
    return WithFrame(module, machine, module.startDepth, none,
                     [&](Frame& frame) { return RunBlock(module.start, frame); });
}

}  // namespace

bool MayStay(const Value& value) {
    if (value.IsText()) {
        return value.AsText().size() <= MaxKept;
    }
    if (value.kind() != Kind::List) {
        return true;
    }
    std::size_t size = 0;
    for (const Value& item : value.AsList()) {
        size += sizeof(Value) + (item.IsText() ? item.AsText().size() : 0);
    }
    return size <= MaxKept;
}

bool TakeSteps(Frame& frame, int cost) {
    frame.machine.steps -= cost;
    if (frame.machine.steps >= 0) {
        return true;
    }
    frame.fault = Value::Error("The code of the report takes too many steps");
    return false;
}

Flow RunBlock(const Block& block, Frame& frame) {
    for (const auto& statement : block) {
        if (!TakeSteps(frame, statement->cost)) {
            return Flow::Fault;
        }
        const Flow flow = statement->Run(frame);
        if (flow != Flow::Next) {
            return flow;
        }
    }
    return Flow::Next;
}

CodeCallNode::CodeCallNode(CodeModule& owner, const CodeFunction& what, std::vector<NodePtr> values)
    : module(owner), function(what), arguments(std::move(values)) {
    for (const NodePtr& argument : arguments) {
        Deepen(*argument);
    }
}

std::string CodeCallNode::Fault() const {
    const auto& parameters = function.parameters;
    const bool rest = !parameters.empty() && parameters.back().rest;
    std::size_t least = 0;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        least = parameters[i].missing || parameters[i].rest ? least : i + 1;
    }
    if (arguments.size() < least || (!rest && arguments.size() > parameters.size())) {
        return "\"" + function.name + "\" does not take " + std::to_string(arguments.size()) +
               (arguments.size() == 1 ? " argument" : " arguments");
    }
    return "";
}

bool CodeCallNode::Gather(Machine& machine, std::vector<Value>& locals, Value& fault) const {
    ValueList rest;
    const auto& parameters = function.parameters;
    const bool collects = !parameters.empty() && parameters.back().rest;
    const std::size_t single = parameters.size() - (collects ? 1 : 0);
    for (std::size_t i = 0; i < std::max(arguments.size(), single); ++i) {
        Value value = i < arguments.size() ? arguments[i]->Run(machine) : parameters[i].missing->Run(machine);
        if (i < single) {
            value = ConvertTo(parameters[i].conversion, value, machine);
        }
        if (value.IsError()) {
            fault = value;
            return false;
        }
        if (i < single) {
            locals[i + 1] = std::move(value);
        } else if (value.kind() == Kind::List) {
            // A list given as a whole is the rest itself.
            rest.insert(rest.end(), value.AsList().begin(), value.AsList().end());
        } else {
            rest.push_back(std::move(value));
        }
    }
    if (collects) {
        locals[single + 1] = machine.Charged(Value::List(std::move(rest)));
    }
    return true;
}

Value CodeCallNode::Call(Machine& machine) const {
    std::vector<Value> locals(static_cast<std::size_t>(function.slots));
    locals[0] = ConvertTo(function.conversion, Value(), machine);
    Value fault;
    if (!Gather(machine, locals, fault)) {
        return fault;
    }
    fault = WithFrame(module, machine, function.depth, locals, [&](Frame& frame) {
        return TakeSteps(frame, 1) ? RunBlock(function.body, frame) : Flow::Fault;
    });
    if (fault.IsError()) {
        return fault;
    }
    for (std::size_t i = 0; i < arguments.size() && i < function.parameters.size(); ++i) {
        const auto* variable = function.parameters[i].byReference
                                   ? dynamic_cast<const VariableNode*>(arguments[i].get())
                                   : nullptr;
        if (variable && variable->variable.module && !MayStay(locals[i + 1])) {
            return Value::Error("A variable of the report becomes too large");
        }
        if (variable && !variable->variable.constant) {
            variable->variable.In(machine) = locals[i + 1];
        }
    }
    return locals[0];
}

Value CodeCallNode::Run(Machine& machine) const {
    const Value fault = Start(module, machine);
    return fault.IsError() ? fault : Call(machine);
}

Value ModuleVariableNode::Run(Machine& machine) const {
    const Value fault = Start(module, machine);
    return fault.IsError() ? fault : variable.In(machine);
}

}  // namespace rdl::expr
