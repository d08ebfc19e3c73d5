// SPDX-License-Identifier: GPL-3.0-or-later
// Report-level code: the functions, variables and constants of a report's Code element (MS-RDL, Code), in
// Visual Basic.
//
// Supported: Function and Sub with parameters, Dim, Const, Static, assignment, If, Select Case, For, For
// Each, While, Do, Try, Exit, Continue and Return, over the expression language. Code has no access to the
// machine. Steps, memory and depth are limited; exceeding a limit gives #Error at the call.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/expr/language/code_functions.h"

namespace rdl::expr {

struct CodeModule;

// The compiled code. It must outlive every program compiled with it (CompileContext::code).
class CodeLibrary : public CodeFunctions {
 public:
    // Compiles `source`. Raises rdl::Error "Code, line <n>: <what>" for errors and unsupported statements.
    // `context` resolves parameters.
    CodeLibrary(std::string_view source, CompileContext& context);
    ~CodeLibrary() override;
    CodeLibrary(const CodeLibrary&) = delete;
    CodeLibrary& operator=(const CodeLibrary&) = delete;

    // Restores the initial values of the code's variables, before another run of the report.
    void Reset();

    std::vector<std::string> FunctionNames() const override;
    bool UsesPageGlobals() const override;
    bool UsesReportItems() const override;
    std::unique_ptr<Program::Node> Use(const std::string& lower,
                                       std::vector<std::unique_ptr<Program::Node>> arguments,
                                       std::string& why) const override;

 private:
    std::unique_ptr<CodeModule> m_module;
};

}  // namespace rdl::expr
