// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/code/statements.h"

#include <algorithm>

#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

constexpr std::int64_t MaxElements = 16384;

Flow Fail(Frame& frame, Value why) {
    frame.fault = std::move(why);
    return Flow::Fault;
}

// False with the fault set when it is no truth.
bool Decide(const Node& condition, Frame& frame, bool& truth) {
    const Value value = condition.Run(frame.machine);
    if (value.IsError()) {
        frame.fault = value;
        return false;
    }
    if (!ToBoolean(value, frame.machine.culture(), truth)) {
        frame.fault = NoConversion(value, "a Boolean");
        return false;
    }
    return true;
}

// Handles the flow after an iteration. Returns true if the loop ends, with `flow` for the enclosing blocks.
bool LeavesLoop(Flow& flow, Flow exit, Flow next) {
    if (flow == Flow::Next || flow == next) {
        return false;
    }
    flow = flow == exit ? Flow::Next : flow;
    return true;
}

bool Place(const Node& node, Frame& frame, std::int64_t& index) {
    const Value value = node.Run(frame.machine);
    if (value.IsError()) {
        frame.fault = value;
        return false;
    }
    if (!ToInteger(value, frame.machine.culture(), index)) {
        frame.fault = NoConversion(value, "a number");
        return false;
    }
    return true;
}

// Through the object, whose growth counts like text that is made.
Flow StoreMember(const Value& target, std::string_view member, const Value& index, Operator operation,
                 Value result, Frame& frame) {
    const Culture& culture = frame.machine.culture();
    if (target.kind() != Kind::Object) {
        return Fail(frame, target.IsError() ? target : NoConversion(target, "an object"));
    }
    ScriptObject& object = AsScriptObject(target);
    const std::size_t before = object.Weight();
    if (operation) {
        const Value held[] = {target, index};
        const Value old =
            object.Invoke(member, Call(held, index.IsNull() ? 1 : 2, frame.machine.environment));
        result = frame.machine.Charged(operation(old, result, culture));
    }
    Value fault = result.IsError() ? result : object.Store(member, index, result, culture);
    frame.machine.bytes -= static_cast<std::int64_t>(std::max(before, object.Weight()) - before);
    return fault.IsError() ? Fail(frame, std::move(fault)) : Flow::Next;
}

}  // namespace

Flow MemberStatement::Run(Frame& frame) const {
    const Value target = object->Run(frame.machine);
    Value at = index ? index->Run(frame.machine) : Value();
    if (at.IsError()) {
        return Fail(frame, std::move(at));
    }
    return StoreMember(target, member, at, operation, value->Run(frame.machine), frame);
}

Flow WithStatement::Run(Frame& frame) const {
    Value with = object->Run(frame.machine);
    if (with.IsError()) {
        return Fail(frame, std::move(with));
    }
    target.In(frame.machine) = std::move(with);
    return RunBlock(body, frame);
}

Flow AssignStatement::Run(Frame& frame) const {
    Machine& machine = frame.machine;
    Value at = index ? index->Run(machine) : Value();
    if (at.IsError()) {
        return Fail(frame, std::move(at));
    }
    Value result = value ? value->Run(machine) : Value();
    Value& variable = target.In(machine);
    if (index && variable.kind() == Kind::Object) {
        return StoreMember(variable, ".item", at, operation, result, frame);
    }
    std::int64_t place = 0;
    if (index && !ToInteger(at, machine.culture(), place)) {
        return Fail(frame, NoConversion(at, "a number"));
    }
    if (index && (variable.kind() != Kind::List || place < 0 ||
                  static_cast<std::size_t>(place) >= variable.AsList().size())) {
        return Fail(frame, Value::Error("An index lies outside its list"));
    }
    if (operation) {
        const Value& before = index ? variable.AsList()[static_cast<std::size_t>(place)] : variable;
        result = machine.Charged(operation(before, result, machine.culture()));
    }
    result = ConvertTo(target.conversion, result, machine);
    if (result.IsError()) {
        return Fail(frame, result);
    }
    return index ? StoreElement(std::move(result), place, frame) : Store(std::move(result), frame);
}

Flow AssignStatement::StoreElement(Value result, std::int64_t place, Frame& frame) const {
    if (result.kind() == Kind::List || result.kind() == Kind::Object) {
        return Fail(frame, Value::Error("A list can hold neither lists nor objects"));
    }
    Value& variable = target.In(frame.machine);
    // Changes the list in place if no other variable has it; only texts make it larger.
    if (ValueList* own = variable.OwnList(); own && (!target.module || !result.IsText())) {
        (*own)[static_cast<std::size_t>(place)] = std::move(result);
        return Flow::Next;
    }
    ValueList values = variable.AsList();
    values[static_cast<std::size_t>(place)] = std::move(result);
    return Store(frame.machine.Charged(Value::List(std::move(values))), frame);
}

Flow AssignStatement::Store(Value result, Frame& frame) const {
    if (result.IsError()) {
        return Fail(frame, std::move(result));
    }
    if (target.module && !MayStay(result)) {
        return Fail(frame, Value::Error("A variable of the report becomes too large"));
    }
    target.In(frame.machine) = std::move(result);
    return Flow::Next;
}

Flow SizeStatement::Run(Frame& frame) const {
    std::int64_t last = 0;
    if (!Place(*upper, frame, last)) {
        return Flow::Fault;
    }
    if (last < -1 || last >= MaxElements) {
        return Fail(frame, Value::Error("A list holds up to " + std::to_string(MaxElements) + " elements"));
    }
    Value& variable = target.In(frame.machine);
    ValueList values;
    if (preserve && variable.kind() == Kind::List) {
        values = variable.AsList();
    }
    values.resize(static_cast<std::size_t>(last + 1), ConvertTo(target.conversion, Value(), frame.machine));
    Value list = frame.machine.Charged(Value::List(std::move(values)));
    if (list.IsError()) {
        return Fail(frame, list);
    }
    variable = std::move(list);
    return Flow::Next;
}

Flow CallStatement::Run(Frame& frame) const {
    Value value = call->Run(frame.machine);
    return value.IsError() ? Fail(frame, std::move(value)) : Flow::Next;
}

Flow ReturnStatement::Run(Frame& frame) const {
    if (value) {
        Value result = ConvertTo(conversion, value->Run(frame.machine), frame.machine);
        if (result.IsError()) {
            return Fail(frame, std::move(result));
        }
        frame.machine.locals[0] = std::move(result);
    }
    return Flow::Return;
}

Flow IfStatement::Run(Frame& frame) const {
    for (const auto& [condition, block] : branches) {
        bool truth = false;
        if (!Decide(*condition, frame, truth)) {
            return Flow::Fault;
        }
        if (truth) {
            return RunBlock(block, frame);
        }
    }
    return RunBlock(otherwise, frame);
}

bool SelectStatement::Matches(const CaseTest& test, const Value& selected, Frame& frame) const {
    const Culture& culture = frame.machine.culture();
    Value result = CompareAs(test.upper ? Comparison::GreaterEqual : test.comparison, selected,
                             test.value->Run(frame.machine), culture);
    if (test.upper && result.kind() == Kind::Boolean && result.AsBoolean()) {
        result = CompareAs(Comparison::LessEqual, selected, test.upper->Run(frame.machine), culture);
    }
    if (result.IsError()) {
        frame.fault = result;
        return false;
    }
    return result.AsBoolean();
}

Flow SelectStatement::Run(Frame& frame) const {
    const Value selected = value->Run(frame.machine);
    if (selected.IsError()) {
        return Fail(frame, selected);
    }
    const Block* chosen = &otherwise;
    for (const auto& [tests, block] : cases) {
        bool matches = false;
        for (const CaseTest& test : tests) {
            if (!TakeSteps(frame, 1)) {
                return Flow::Fault;
            }
            matches = Matches(test, selected, frame);
            if (frame.fault.IsError()) {
                return Flow::Fault;
            }
            if (matches) {
                break;
            }
        }
        if (matches) {
            chosen = &block;
            break;
        }
    }
    const Flow flow = RunBlock(*chosen, frame);
    return flow == Flow::ExitSelect ? Flow::Next : flow;
}

Flow ForStatement::Run(Frame& frame) const {
    Machine& machine = frame.machine;
    const Culture& culture = machine.culture();
    Value at = ConvertTo(counter.conversion, from->Run(machine), machine);
    const Value end = to->Run(machine);
    const Value by = step ? step->Run(machine) : Value::Integer(1);
    double direction = 0;
    if (!ToDouble(by, culture, direction)) {
        return Fail(frame, by.IsError() ? by : NoConversion(by, "a number"));
    }
    for (;;) {
        if (!TakeSteps(frame, cost)) {
            return Flow::Fault;
        }
        if (at.IsError()) {
            return Fail(frame, at);
        }
        counter.In(machine) = at;
        const Value goesOn =
            CompareAs(direction >= 0 ? Comparison::LessEqual : Comparison::GreaterEqual, at, end, culture);
        if (goesOn.IsError()) {
            return Fail(frame, goesOn);
        }
        if (!goesOn.AsBoolean()) {
            return Flow::Next;
        }
        Flow flow = RunBlock(body, frame);
        if (LeavesLoop(flow, Flow::ExitFor, Flow::ContinueFor)) {
            return flow;
        }
        at = ConvertTo(counter.conversion, Add(counter.In(machine), by, culture), machine);
    }
}

Flow ForEachStatement::Run(Frame& frame) const {
    Value values = list->Run(frame.machine);
    if (values.kind() == Kind::Object) {
        values = frame.machine.Charged(AsScriptObject(values).Elements());
    }
    if (values.IsError()) {
        return Fail(frame, values);
    }
    if (values.kind() != Kind::List) {
        return Fail(frame, NoConversion(values, "a list"));
    }
    for (const Value& each : values.AsList()) {
        const Value converted = ConvertTo(element.conversion, each, frame.machine);
        if (converted.IsError()) {
            return Fail(frame, converted);
        }
        if (!TakeSteps(frame, 1)) {
            return Flow::Fault;
        }
        element.In(frame.machine) = converted;
        Flow flow = RunBlock(body, frame);
        if (LeavesLoop(flow, Flow::ExitFor, Flow::ContinueFor)) {
            return flow;
        }
    }
    return Flow::Next;
}

Flow LoopStatement::Run(Frame& frame) const {
    for (bool first = true;; first = false) {
        if (!TakeSteps(frame, cost)) {
            return Flow::Fault;
        }
        bool truth = !until;
        if (condition && !(atEnd && first) && !Decide(*condition, frame, truth)) {
            return Flow::Fault;
        }
        if (truth == until) {
            return Flow::Next;
        }
        Flow flow = RunBlock(body, frame);
        if (LeavesLoop(flow, isDo ? Flow::ExitDo : Flow::ExitWhile,
                       isDo ? Flow::ContinueDo : Flow::ContinueWhile)) {
            return flow;
        }
    }
}

Flow TryStatement::Catch(Frame& frame) const {
    const Value why = std::exchange(frame.fault, Value());
    for (const CatchClause& clause : clauses) {
        bool holds = true;
        if (clause.message) {
            clause.message->In(frame.machine) = Value::Text(why.AsText());
        }
        if (clause.condition && !Decide(*clause.condition, frame, holds)) {
            return Flow::Fault;
        }
        if (holds) {
            return RunBlock(clause.body, frame);
        }
    }
    return Fail(frame, why);
}

Flow TryStatement::Run(Frame& frame) const {
    Flow flow = RunBlock(body, frame);
    // Too many steps or too much memory is not for the report to catch.
    if (flow == Flow::Fault && frame.machine.steps >= 0 && frame.machine.bytes >= 0) {
        flow = Catch(frame);
    }
    const Value fault = std::exchange(frame.fault, Value());
    const Flow last = RunBlock(finally, frame);
    if (last != Flow::Next) {
        return last;
    }
    frame.fault = fault;
    return flow;
}

Flow ThrowStatement::Run(Frame& frame) const {
    const Value why = message ? message->Run(frame.machine) : Value::Text("The code of the report gave up");
    return Fail(frame, why.IsError() ? why : Value::Error(TextOf(why, frame.machine.culture())));
}

}  // namespace rdl::expr
