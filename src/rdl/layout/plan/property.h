// SPDX-License-Identifier: GPL-3.0-or-later
// A compiled property: a constant or a program, which Programs owns.
#pragma once

#include "rdl/layout/plan/programs.h"

namespace rdl::layout {

struct Property {
    const expr::Program* program = nullptr;  // null: the constant
    Value constant;
    int field = -1;  // slot if the program is just a field
    bool isSet = false;

    Property() = default;
    Property(const Expr& source, const Programs& programs)
        : program(programs.Of(source)), isSet(source.IsSet()) {
        if (!program) {
            constant = isSet ? Value::Text(source.source) : Value();
        } else if (const Value* known = program->Constant()) {
            constant = *known;
            program = nullptr;
        } else {
            field = program->PlainField();
        }
    }
    Value Get(expr::Environment& environment) const {
        if (!program) {
            return constant;
        }
        return field >= 0 ? environment.Field(field) : program->Evaluate(environment);
    }
    bool IsConstant() const { return program == nullptr; }
};

}  // namespace rdl::layout
