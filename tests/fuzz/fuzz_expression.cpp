// Expressions and report-level code are not trusted: whatever they say, compiling raises at most rdl::Error
// and running ends.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/rdl/expr/code.h"
#include "platform/rdl/expr/fixture.h"

namespace rdl::expr {
namespace {

void Expression(std::string_view source, CompileContext& context) {
    TestEnvironment environment;
    const auto program = Compile(source, "Fuzz", context);
    const Value value = program->Evaluate(environment);
    Hash(value);
    Compare(value, value);
    ToText(value, environment.CurrentCulture());
}

}  // namespace
}  // namespace rdl::expr

// The first byte chooses: an expression, or code and a call of its function F.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view source(reinterpret_cast<const char*>(data) + 1, size - 1);
    rdl::expr::TestContext context;
    try {
        if (data[0] % 2 == 0) {
            rdl::expr::Expression(source, context);
            return 0;
        }
        const rdl::expr::CodeLibrary library(source, context);
        context.code = &library;
        rdl::expr::Expression("=Code.F(Fields!Amount.Value)", context);
    } catch (const rdl::Error&) {
        return 0;
    }
    return 0;
}
