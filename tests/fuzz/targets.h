// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzzers feed, each a function of bytes: a report file and everything that stands in it is not
// trusted. Whatever the input, the function returns: the engine raises rdl::Error or RuntimeError at most,
// and ends.
//
// The same functions run in the fuzzers and, over the kept inputs, in fuzz_corpus_test.
#pragma once

#include <string_view>

namespace fuzz {

void RunDefinition(std::string_view input);  // a report file: read, checked, opened
void RunReport(std::string_view input);      // a report file: run and written in one of the formats
void RunData(
    std::string_view input);  // a first line of "json PATH", "xml", "csv" or "sql", then the data or query
void RunExpression(std::string_view input);  // an expression, with its =
void RunCode(std::string_view input);        // report-level code; its function F is called
void RunFormula(std::string_view input);     // a record selection formula
void RunFormat(std::string_view input);      // a culture's name, a value and a format string, each on a line

struct Target {
    std::string_view name;
    void (*run)(std::string_view input);
};
inline constexpr Target Targets[] = {
    {"definition", RunDefinition}, {"report", RunReport}, {"data", RunData},
    {"expression", RunExpression}, {"code", RunCode},     {"formula", RunFormula},
    {"format", RunFormat},
};

}  // namespace fuzz
