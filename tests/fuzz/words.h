// SPDX-License-Identifier: GPL-3.0-or-later
// The names that the engine's tables know, for the fuzzers' dictionaries. What is grammar is written by hand
// in tests/fuzz/dictionaries.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

using Words = std::vector<std::string>;

Words ExpressionWords();  // functions, members, constants, aggregates, globals
Words CodeWords();        // the same without aggregates, and types
Words FormulaWords();     // functions and periods of record selection formulas
Words FormatWords();      // names of cultures, alone and as a line

// Returns the word as a line of a dictionary of libFuzzer, without the line feed: in quotes, other bytes than
// printable ASCII as \xNN.
std::string DictionaryLine(std::string_view word);

}  // namespace fuzz
