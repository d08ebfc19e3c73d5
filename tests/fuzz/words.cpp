// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/words.h"

#include <span>

#include "rdl/expr/language/names.h"
#include "rdl/expr/library/functions.h"
#include "rdl/format/culture_table.h"
#include "rdl/formula/function_table.h"
#include "rdl/formula/periods.h"
#include "rdl/values/ascii.h"

namespace fuzz {
namespace {

// As it is called: "left(", "new string(", ".substring(", ".length".
std::string CallOf(const rdl::expr::FunctionInfo& info) {
    std::string call(info.name);
    if (call.starts_with("new.")) {
        call.replace(0, 4, "new ");
    }
    const bool bare = call.starts_with('.') ? info.most == 1 : info.most == 0;
    return bare ? call : call + "(";
}

// What expressions and code have in common.
Words LibraryWords() {
    Words words;
    for (const auto& table : rdl::expr::FunctionTables()) {
        for (const rdl::expr::FunctionInfo& info : table) {
            words.push_back(CallOf(info));
        }
    }
    for (const rdl::expr::NamedConstant& constant : rdl::expr::Constants()) {
        words.emplace_back(constant.name);
    }
    for (const rdl::expr::NamedGlobal& row : rdl::expr::GlobalNames) {
        words.push_back((rdl::expr::IsOfUser(row.global) ? "User!" : "Globals!") + std::string(row.name));
    }
    return words;
}

void AddForms(Words& words, bool withDataSets) {
    for (const rdl::expr::NamedForm& row : rdl::expr::SpecialForms) {
        const bool isOperator = row.form == rdl::expr::SpecialForm::TypeOf;
        if (withDataSets || !rdl::expr::ReadsADataSet(row.form)) {
            words.push_back(std::string(row.name) + (isOperator ? " " : "("));
        }
    }
}

}  // namespace

Words ExpressionWords() {
    Words words = LibraryWords();
    AddForms(words, true);
    for (const rdl::expr::NamedAggregate& row : rdl::expr::AggregateNames) {
        words.push_back(std::string(row.name) + "(");
    }
    return words;
}

Words CodeWords() {
    Words words = LibraryWords();
    AddForms(words, false);
    for (const rdl::expr::NamedType& row : rdl::expr::TypeNames) {
        words.push_back("As " + std::string(row.name));
    }
    return words;
}

Words FormulaWords() {
    Words words;
    for (const auto& table : rdl::formula::FunctionTables()) {
        for (const rdl::formula::FunctionInfo& info : table) {
            words.push_back(std::string(info.name) + (info.most == 0 ? "" : "("));
        }
    }
    for (const std::string_view period : rdl::formula::PeriodNames()) {
        words.emplace_back(period);
    }
    return words;
}

Words FormatWords() {
    Words words;
    const auto add = [&words](std::string name) {
        words.push_back(name + "\n");
        words.push_back(std::move(name));
    };
    for (const rdl::LanguageRow& row : std::span(rdl::LanguageRows, rdl::LanguageRowCount)) {
        add(row.code);
    }
    for (const rdl::RegionRow& row : std::span(rdl::RegionRows, rdl::RegionRowCount)) {
        add(row.name);
    }
    return words;
}

std::string DictionaryLine(std::string_view word) {
    std::string line = "\"";
    for (const char c : word) {
        if (c >= ' ' && c <= '~' && c != '"' && c != '\\') {
            line += c;
        } else {
            line += "\\x";
            rdl::AppendHexByte(c, line, rdl::SmallHexDigits);
        }
    }
    return line + "\"";
}

}  // namespace fuzz
