// Report-level code: the functions, variables and constants of a report's Code element, in Visual Basic.
//
// Known are Function and Sub with parameters, Dim, Const and Static, assignment, If, Select Case, For, For
// Each, While, Do, Try, Exit, Continue and Return, over the language of expressions. Nothing of it reaches
// the machine. Steps, memory and depth are bounded; what exceeds a bound is #Error where the function was
// called.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/expr/language/code_functions.h"

namespace rdl::expr {

struct CodeModule;

// It must outlive every program that was compiled with it (CompileContext::code).
class CodeLibrary : public CodeFunctions {
 public:
    // Raises rdl::Error "Code, line <n>: <what>" for what is wrong or not known. The context is asked for
    // parameters.
    CodeLibrary(std::string_view source, CompileContext& context);
    ~CodeLibrary() override;
    CodeLibrary(const CodeLibrary&) = delete;
    CodeLibrary& operator=(const CodeLibrary&) = delete;

    // Variables of the code go back to how they began: for another run of the same report.
    void Reset();

    bool UsesPageGlobals() const override;
    bool UsesReportItems() const override;
    std::unique_ptr<Program::Node> Use(const std::string& lower,
                                       std::vector<std::unique_ptr<Program::Node>> arguments,
                                       std::string& why) const override;

 private:
    std::unique_ptr<CodeModule> m_module;
};

}  // namespace rdl::expr
