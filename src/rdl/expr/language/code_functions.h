// Report-level code as the compiler of expressions sees it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rdl/expr/language/expression.h"

namespace rdl::expr {

class CodeFunctions {
 public:
    virtual ~CodeFunctions() = default;
    // Code.Name with its arguments. Null when there is no such function or variable, with the reason in
    // `why`.
    virtual std::unique_ptr<Program::Node> Use(const std::string& lower,
                                               std::vector<std::unique_ptr<Program::Node>> arguments,
                                               std::string& why) const = 0;
    // Whether any function asks for page numbers or report items; then every program that calls one may.
    virtual bool UsesPageGlobals() const = 0;
    virtual bool UsesReportItems() const = 0;
};

}  // namespace rdl::expr
