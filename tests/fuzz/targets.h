// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzzers feed, each a function of bytes: a report file and everything that stands in it is not
// trusted. Whatever the input, the function returns: the engine raises rdl::Error or RuntimeError at most,
// and ends.
//
// The same functions run in the fuzzers and, over the kept inputs, in fuzz_corpus_test.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "fuzz/words.h"

namespace fuzz {

void RunDefinition(std::string_view input);  // a report file: read, checked, opened
// A report file: run and written in the format that a comment at its end names, <!--PDF-->; without one it is
// shown on the screen. So a new format changes nothing for the inputs that are there.
void RunReport(std::string_view input);
// Returns the report with the mark of a format, by `choice` modulo their number.
std::string WithFormat(std::string_view report, std::size_t choice);
std::size_t FormatCount();
void RunData(
    std::string_view input);  // a first line of "json PATH", "xml", "csv" or "sql", then the data or query
void RunExpression(std::string_view input);  // an expression, with its =
void RunCode(std::string_view input);        // report-level code; its function F is called
void RunFormula(std::string_view input);     // a record selection formula
void RunFormat(std::string_view input);      // a culture's name, a value and a format string, each on a line
// A first line of "text", "bytes" or the size of a shapefile, then the shape, or the shapefile and its table.
void RunShape(std::string_view input);

struct Target {
    std::string_view name;
    void (*run)(std::string_view input);
    Words (*words)() = nullptr;  // null: no table of the engine has names for it
};
inline constexpr Target Targets[] = {
    {"definition", RunDefinition},
    {"report", RunReport},
    {"data", RunData},
    {"expression", RunExpression, ExpressionWords},
    {"code", RunCode, CodeWords},
    {"formula", RunFormula, FormulaWords},
    {"format", RunFormat, FormatWords},
    {"shape", RunShape},
};

}  // namespace fuzz
