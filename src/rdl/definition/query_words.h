// SPDX-License-Identifier: GPL-3.0-or-later
// What a query says of itself, in a report and in a file that reports share.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "rdl/api/query_kinds.h"

namespace rdl {

// Returns Text for an empty word, and nullopt for one that is not known.
std::optional<QueryKind> CommandTypeOf(std::string_view word);

// Returns the seconds, 0 for an empty text, and nullopt for one that is not a whole number from 0 to
// a million.
std::optional<int> TimeoutOf(std::string_view text);

// Returns the error text for such a word or such a number.
std::string NotACommandType(std::string_view word);
std::string NotATimeout(std::string_view text);

}  // namespace rdl
