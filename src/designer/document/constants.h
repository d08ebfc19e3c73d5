// SPDX-License-Identifier: GPL-3.0-or-later
// Constants of a report, read as the engine reads them, but nothing is refused: what is not a constant of its
// kind counts as missing.
#pragma once

#include <optional>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Returns whether the text at the path is true ("true" in any case, or "1"; blanks around it do not count).
// A missing element, an empty one and an expression are not.
bool FlagOf(const Document& document, ElementId id, std::string_view path);

// Returns the whole number that the text begins with, after blanks, at least `least` and at most `most`;
// `missing` if it begins with none.
int NumberIn(std::string_view text, int missing, int least, int most);
// The same for the text at the path; `missing` if there is no such element, or `id` is NoElement.
int NumberAt(const Document& document, ElementId id, std::string_view path, int missing, int least, int most);

// Returns the finite number that the whole text is; nullopt for any other text, and for one with blanks.
std::optional<double> PlainNumber(std::string_view text);

}  // namespace designer
