// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a text box as one text that can be typed: a line for each paragraph.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Returns nullopt for an item that is no text box, and for one with paragraphs of several runs: they have
// formats of their own, which a text without formats would lose.
std::optional<std::string> TextOfItem(const Document& document, ElementId item);

// Sets the text. New lines become paragraphs if the text box has several, with the format of the last one;
// otherwise they stay within its only one. Raises EditError if TextOfItem returns nullopt.
void SetTextOfItem(Document& document, ElementId item, std::string_view text);

}  // namespace designer
