// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/language/near_name.h"

#include "rdl/expr/language/code_functions.h"
#include "rdl/expr/language/names.h"
#include "rdl/expr/library/functions.h"
#include "rdl/values/near_word.h"

namespace rdl::expr {
namespace {

void TryOwn(const CodeFunctions& code, NearWord& search) {
    for (const std::string& name : code.FunctionNames()) {
        search.Try(name, "Code.");
    }
}

}  // namespace

std::string NearestOwn(std::string_view lower, const CodeFunctions& code) {
    NearWord search(lower);
    TryOwn(code, search);
    return search.Nearest();
}

std::string NearestName(std::string_view lower, const CodeFunctions* code) {
    NearWord search(lower);
    if (code) {
        TryOwn(*code, search);
    }
    for (const auto& [name, kind] : AggregateNames) {
        search.Try(name);
    }
    for (const auto& [name, form] : SpecialForms) {
        search.Try(name);
    }
    for (const auto& table : FunctionTables()) {
        for (const FunctionInfo& function : table) {
            if (!function.name.starts_with('.')) {
                search.Try(function.name);
            }
        }
    }
    for (const NamedConstant& constant : Constants()) {
        search.Try(constant.name);
    }
    return search.Nearest();
}

std::string NearestMember(std::string_view lower) {
    NearWord search(lower);
    for (const auto& table : FunctionTables()) {
        for (const FunctionInfo& function : table) {
            if (function.name.starts_with('.')) {
                search.Try(function.name.substr(1));
            }
        }
    }
    return search.Nearest();
}

}  // namespace rdl::expr
