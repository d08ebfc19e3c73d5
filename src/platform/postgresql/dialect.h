// SPDX-License-Identifier: GPL-3.0-or-later
// Translates the system's SQL dialect to PostgreSQL's, on the tables and functions of the team's store.
#pragma once

#include <string>
#include <string_view>

// Whether an insert returns the key of its row.
enum class InsertedKey { IsReturned, IsIgnored };

// The statement as PostgreSQL understands it:
//   select top 10 a from t        ->  select a from t order by t.rowid limit 10: rows come in the order in
//                                     which they were put in; with `order by`, rows that are equal do
//   select distinct a from t      ->  each value once, in the order of the first row that has it
//   order by a desc               ->  order by a desc nulls last, t.rowid: Null is below all values
//   order by LastRun              ->  order by store_moment('ymd',LastRun): its texts hold dates in several
//                                     forms; ymd, dmy or mdy is the order of this machine's region
//   left(a,3), datediff('d',a,b)  ->  functions of the store
//   Now()                         ->  the present moment of this machine, as a text
//   [Password], "Password"        ->  "password": names compare without regard to case
//   a like 'x%'                   ->  a like 'x%' escape '': a backslash is an ordinary character
// Comments become blanks. Raises a syntax error for text after the end of the statement and for what is a
// text in PostgreSQL only (E'...', $$...$$).
std::string TranslateForServer(std::string_view statement, InsertedKey key = InsertedKey::IsIgnored);

// Returns true if the statement mentions the column that `select *` does not show.
bool MentionsRowOrder(std::string_view statement);

// Returns the table, in lower case, if the statement is `select max(key) from table`, with any alias for
// the result; else an empty text.
std::string TableOfNewestKey(std::string_view statement);

// Returns the table of an insert, in lower case, or an empty text for any other statement.
std::string TableOfInsert(std::string_view statement);
