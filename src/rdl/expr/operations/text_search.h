// SPDX-License-Identifier: GPL-3.0-or-later
// Searches in text for functions and members. Positions are bytes; npos if nothing is found.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::expr {

std::size_t Find(std::string_view text, std::string_view what, std::size_t from, bool noCase);
std::size_t FindLast(std::string_view text, std::string_view what, bool noCase);
// Replaces the first `most` occurrences (-1: all). Returns an error value if the result is too long.
Value ReplaceAll(std::string_view text, std::string_view what, std::string_view with, std::int64_t most,
                 bool noCase);
// Splits into at most `most` parts (-1: any number); the last part holds the rest. Returns a List.
Value SplitText(std::string_view text, std::string_view separator, std::int64_t most, bool noCase);

}  // namespace rdl::expr
