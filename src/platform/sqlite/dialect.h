// The system's SQL dialect, told to SQLite.
#pragma once

#include <string>
#include <string_view>

// The statement as SQLite understands it:
//   select top 10 a from t order by a   ->  select a from t order by a limit 10, in subselects too
//   left(a, 3)                          ->  "left"(a, 3), as left is a word of joins there
//   left(a, 3) = 'Abc'                  ->  'Abc' collate nocase, so that texts compare without regard to
//   case
//   order by LastRun desc               ->  order by LastRun collate moment desc, as its texts hold dates in
//   several forms
// Texts, quoted names and comments stay as they are. datediff and Now are functions (functions.h).
std::string TranslateDialect(std::string_view statement);

// Whether nothing but blanks, comments and semicolons is left.
bool IsBlankStatement(std::string_view rest);
