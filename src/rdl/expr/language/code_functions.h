// SPDX-License-Identifier: GPL-3.0-or-later
// The expression compiler's view of report-level code.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/expr/language/expression.h"

namespace rdl::expr {

class CodeFunctions {
 public:
    virtual ~CodeFunctions() = default;
    // Compiles Code.Name with its arguments. Returns null with the reason in `why` if there is no such
    // function or variable.
    virtual std::unique_ptr<Program::Node> Use(const std::string& lower,
                                               std::vector<std::unique_ptr<Program::Node>> arguments,
                                               std::string& why) const = 0;
    // The names of all functions, in lower case.
    virtual std::vector<std::string> FunctionNames() const = 0;
    // Whether any function uses page numbers or report items. Every program that calls code is then assumed
    // to.
    virtual bool UsesPageGlobals() const = 0;
    virtual bool UsesReportItems() const = 0;
};

}  // namespace rdl::expr
