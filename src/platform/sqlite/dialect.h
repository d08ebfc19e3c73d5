// SPDX-License-Identifier: GPL-3.0-or-later
// Translates the system's SQL dialect to SQLite's.
#pragma once

#include <string>
#include <string_view>

// The statement as SQLite understands it:
//   select top 10 a from t order by a   ->  select a from t order by a limit 10, in subselects too
//   left(a, 3)                          ->  "left"(a, 3), as left is a word of joins there
//   left(a, 3) = 'Abc'                  ->  'Abc' collate nocase: texts compare without regard to case
//   order by LastRun desc               ->  order by LastRun collate moment desc: its texts hold dates in
//                                           several forms
// Texts, quoted names and comments stay unchanged. datediff and Now are functions (sql_functions.h).
std::string TranslateDialect(std::string_view statement);
