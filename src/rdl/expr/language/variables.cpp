// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/language/variables.h"

#include <utility>

namespace rdl::expr {

Value ConvertTo(const FunctionInfo* conversion, const Value& value, Machine& machine) {
    const bool text = conversion && (conversion->name == "cstr" || conversion->name == "cchar");
    if (!conversion || value.IsError() || value.kind() == Kind::List ||
        (text && (value.IsNull() || value.IsText()))) {
        return value;
    }
    return conversion->function(Call(&value, 1, machine.environment));
}

TryParseNode::TryParseNode(const FunctionInfo& how, const FunctionInfo* type, NodePtr value)
    : parse(how), conversion(type), text(std::move(value)) {
    Deepen(*text);
}

Value TryParseNode::Run(Machine& machine) const {
    Value source = text->Run(machine);
    if (source.IsError()) {
        return source;
    }
    const Value read = parse.function(Call(&source, 1, machine.environment));
    if (target) {
        const Value value = ConvertTo(conversion, read.IsError() ? Value() : read, machine);
        target->In(machine) = ConvertTo(target->conversion, value, machine);
    }
    return Value::Boolean(!read.IsError());
}

}  // namespace rdl::expr
