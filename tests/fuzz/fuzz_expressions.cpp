// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/targets.h"
#include "rdl/expr/code/code.h"
#include "rdl/expr/fixture.h"

namespace fuzz {
namespace {

// Evaluates twice, as the second time finds what the first has kept, and does with the value what reports do.
void Use(std::string_view source, rdl::expr::TestContext& context) {
    rdl::expr::TestEnvironment environment;
    const auto program = rdl::expr::Compile(source, "Fuzz", context);
    const rdl::Value first = program->Evaluate(environment);
    const rdl::Value second = program->Evaluate(environment);
    rdl::expr::Hash(first);
    rdl::expr::Compare(first, second);
    rdl::ToText(first, environment.CurrentCulture());
}

}  // namespace

void RunExpression(std::string_view input) {
    rdl::expr::TestContext context;
    try {
        Use(input, context);
    } catch (const rdl::Error&) {
        return;
    }
}

void RunCode(std::string_view input) {
    rdl::expr::TestContext context;
    try {
        const rdl::expr::CodeLibrary library(input, context);
        context.code = &library;
        Use("=Code.F(Fields!Amount.Value)", context);
    } catch (const rdl::Error&) {
        return;
    }
}

}  // namespace fuzz
