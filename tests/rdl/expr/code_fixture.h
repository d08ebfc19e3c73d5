// SPDX-License-Identifier: GPL-3.0-or-later
// A report's Code under test.
#pragma once

#include "rdl/expr/code/code.h"
#include "rdl/expr/fixture.h"
#include "rdl/raises.h"

namespace rdl::expr {

// What an expression shows that calls the code.
inline std::string ShowWith(const std::string& code, const std::string& source) {
    TestContext context;
    const CodeLibrary library(code, context);
    context.code = &library;
    TestEnvironment environment;
    const Value value = Compile(source, "Here", context)->Evaluate(environment);
    return value.IsError() ? "#Error " + std::string(value.AsText()) : ToText(value, *environment.culture);
}

// Why the code is refused.
inline std::string CodeRefusal(const std::string& code) {
    TestContext context;
    const std::string error = ErrorRaisedBy([&] { const CodeLibrary library(code, context); });
    return error.empty() ? "accepted" : error;
}

}  // namespace rdl::expr
