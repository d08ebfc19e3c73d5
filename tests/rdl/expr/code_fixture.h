// SPDX-License-Identifier: GPL-3.0-or-later
// A report's Code under test.
#pragma once

#include "rdl/expr/code/code.h"
#include "rdl/expr/fixture.h"

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
    try {
        const CodeLibrary library(code, context);
    } catch (const Error& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace rdl::expr
