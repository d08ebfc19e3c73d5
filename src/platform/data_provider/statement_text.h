// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a statement, as far as all providers treat it alike.
#pragma once

#include <string>
#include <string_view>

// Raises "not a statement" for a statement that is not passed to the database.
[[noreturn]] void RaiseSyntaxError(std::string_view reason);

// Raises a syntax error for a text with a character of the number zero.
void RefuseZeroCharacter(std::string_view statement);

// Returns the current moment in the form of stored dates, year-month-day hour:minute:second, so that it
// compares with them as a text.
std::string NowText();

// Returns true if `rest` holds only blanks, comments and semicolons.
bool IsBlankStatement(std::string_view rest);
