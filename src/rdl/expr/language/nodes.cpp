// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/language/nodes.h"

#include <algorithm>
#include <array>

#include "rdl/expr/library/objects.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/values/utf8.h"

namespace rdl::expr {
namespace {

void DeepenAll(Node& node, const std::vector<NodePtr>& children) {
    for (const NodePtr& child : children) {
        node.Deepen(*child);
    }
}

// False with the error in `value` when it is no truth.
bool Decide(Value& value, const Culture& culture, bool& truth) {
    if (value.kind() == Kind::Boolean) {
        truth = value.AsBoolean();
        return true;
    }
    if (value.IsError()) {
        return false;
    }
    if (!ToBoolean(value, culture, truth)) {
        value = NoConversion(value, "a Boolean");
        return false;
    }
    return true;
}

// The growth of an object counts like text that is made.
Value CallMember(Machine& machine, const FunctionInfo& info, const Call& call) {
    ScriptObject& object = AsScriptObject(call[0]);
    const std::size_t before = object.Weight();
    Value result = object.Invoke(info.name, call);
    machine.bytes -= static_cast<std::int64_t>(std::max(before, object.Weight()) - before);
    // A member that visits a whole object must cost more than one step.
    machine.steps -= info.goesThrough ? static_cast<std::int64_t>(before / 32) : 0;
    return machine.Charged(std::move(result));
}

}  // namespace

BinaryNode::BinaryNode(Operator op, NodePtr l, NodePtr r)
    : operation(op), left(std::move(l)), right(std::move(r)) {
    Deepen(*left);
    Deepen(*right);
}

Value BinaryNode::Run(Machine& machine) const {
    const Value l = left->Run(machine);
    const Value r = right->Run(machine);
    machine.Weigh(l);
    machine.Weigh(r);
    return machine.Charged(operation(l, r, machine.culture()));
}

UnaryNode::UnaryNode(Operation op, NodePtr value) : operation(op), operand(std::move(value)) {
    Deepen(*operand);
}

void ConcatenateNode::Add(NodePtr part) {
    Deepen(*part);
    parts.push_back(std::move(part));
}

Value ConcatenateNode::Run(Machine& machine) const {
    std::string text;
    for (const NodePtr& part : parts) {
        Value value = part->Run(machine);
        if (value.IsError()) {
            return value;
        }
        if (value.IsText()) {
            text += value.AsText();
        } else {
            text += TextOf(value, machine.culture());
        }
        if (text.size() > MaxText) {
            break;
        }
    }
    return machine.Charged(MakeText(text));
}

ShortCircuitNode::ShortCircuitNode(bool stopsAt, NodePtr l, NodePtr r)
    : stop(stopsAt), left(std::move(l)), right(std::move(r)) {
    Deepen(*left);
    Deepen(*right);
}

Value ShortCircuitNode::Run(Machine& machine) const {
    bool truth = false;
    Value value = left->Run(machine);
    if (!Decide(value, machine.culture(), truth)) {
        return value;
    }
    if (truth == stop) {
        return Value::Boolean(stop);
    }
    value = right->Run(machine);
    return Decide(value, machine.culture(), truth) ? Value::Boolean(truth) : value;
}

ConditionNode::ConditionNode(NodePtr test, NodePtr yes, NodePtr no)
    : condition(std::move(test)), whenTrue(std::move(yes)), whenFalse(std::move(no)) {
    Deepen(*condition);
    Deepen(*whenTrue);
    Deepen(*whenFalse);
}

Value ConditionNode::Run(Machine& machine) const {
    bool truth = false;
    Value value = condition->Run(machine);
    if (!Decide(value, machine.culture(), truth)) {
        return value;
    }
    return (truth ? whenTrue : whenFalse)->Run(machine);
}

CoalesceNode::CoalesceNode(NodePtr value, NodePtr instead)
    : first(std::move(value)), second(std::move(instead)) {
    Deepen(*first);
    Deepen(*second);
}

Value CoalesceNode::Run(Machine& machine) const {
    Value value = first->Run(machine);
    return value.IsNull() ? second->Run(machine) : value;
}

SwitchNode::SwitchNode(std::vector<NodePtr> pairs) : parts(std::move(pairs)) {
    DeepenAll(*this, parts);
}

Value SwitchNode::Run(Machine& machine) const {
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        bool truth = false;
        Value value = parts[i]->Run(machine);
        if (!Decide(value, machine.culture(), truth)) {
            return value;
        }
        if (truth) {
            return parts[i + 1]->Run(machine);
        }
    }
    return {};
}

ChooseNode::ChooseNode(std::vector<NodePtr> values) : parts(std::move(values)) {
    DeepenAll(*this, parts);
}

Value ChooseNode::Run(Machine& machine) const {
    Value which = parts[0]->Run(machine);
    double number = 0;
    if (which.IsError()) {
        return which;
    }
    if (!ToDouble(which, machine.culture(), number)) {
        return NoConversion(which, "a number");
    }
    // A fraction is cut off.
    return number >= 1 && number < static_cast<double>(parts.size())
               ? parts[static_cast<std::size_t>(number)]->Run(machine)
               : Value();
}

CallNode::CallNode(const FunctionInfo& what, std::vector<NodePtr> values)
    : info(what), arguments(std::move(values)) {
    DeepenAll(*this, arguments);
}

Value CallNode::Run(Machine& machine) const {
    constexpr std::size_t few = 4;
    std::array<Value, few> here;
    ValueList many;
    Value* values = here.data();
    if (arguments.size() > few) {
        many.resize(arguments.size());
        values = many.data();
    }
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        values[i] = arguments[i]->Run(machine);
        if (values[i].IsError() && !info.takesErrors) {
            return values[i];
        }
        machine.Weigh(values[i]);
    }
    const Call call(values, static_cast<int>(arguments.size()), machine.environment);
    if (values->kind() == Kind::Object && info.name[0] == '.' && !arguments.empty()) {
        return CallMember(machine, info, call);
    }
    return machine.Charged(info.function(call));
}

FillNode::FillNode(NodePtr object, const FunctionInfo& how) : made(std::move(object)), add(how) {
    Deepen(*made);
}

void FillNode::Add(std::vector<NodePtr> values) {
    DeepenAll(*this, values);
    rows.push_back(std::move(values));
}

Value FillNode::Run(Machine& machine) const {
    const Value object = made->Run(machine);
    if (object.kind() != Kind::Object) {
        return object.IsError() ? object : NoConversion(object, "an object that can be filled");
    }
    for (const auto& row : rows) {
        ValueList values = {object};
        for (const NodePtr& part : row) {
            values.push_back(part->Run(machine));
        }
        const Value result = CallMember(
            machine, add, Call(values.data(), static_cast<int>(values.size()), machine.environment));
        if (result.IsError()) {
            return result;
        }
    }
    return object;
}

ListNode::ListNode(std::vector<NodePtr> values) : parts(std::move(values)) {
    DeepenAll(*this, parts);
}

Value ListNode::Run(Machine& machine) const {
    ValueList values;
    values.reserve(parts.size());
    for (const NodePtr& part : parts) {
        Value value = part->Run(machine);
        if (value.IsError()) {
            return value;
        }
        if (value.kind() == Kind::List || value.kind() == Kind::Object) {
            return Value::Error("A list can hold neither lists nor objects");
        }
        values.push_back(std::move(value));
    }
    return machine.Charged(Value::List(std::move(values)));
}

IndexNode::IndexNode(NodePtr value, NodePtr at) : target(std::move(value)), index(std::move(at)) {
    Deepen(*target);
    Deepen(*index);
}

Value IndexNode::Run(Machine& machine) const {
    Value value = target->Run(machine);
    if (value.IsError()) {
        return value;
    }
    Value at = index->Run(machine);
    std::int64_t number = 0;
    if (at.IsError()) {
        return at;
    }
    if (value.kind() == Kind::Object) {
        return AsScriptObject(value).Element(at, machine.culture());
    }
    if (!ToInteger(at, machine.culture(), number)) {
        return NoConversion(at, "a number");
    }
    Value outside = Value::Error("Index " + std::to_string(number) + " is outside the list");
    if (number < 0) {
        return outside;
    }
    const auto place = static_cast<std::size_t>(number);
    if (value.kind() == Kind::List) {
        return place < value.AsList().size() ? value.AsList()[place] : outside;
    }
    if (value.IsText()) {
        const std::string_view character = Slice(value.AsText(), place, 1);
        return character.empty() ? outside : Value::Text(character);
    }
    return number == 0 ? value : outside;
}

}  // namespace rdl::expr
