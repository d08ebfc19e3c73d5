// SPDX-License-Identifier: GPL-3.0-or-later
// Encodes texts, lengths and addresses for RTF (RTF 1.9.1, RTF Syntax, Unicode RTF). Each function
// appends to `out`; none can close the current group.
#pragma once

#include <string>
#include <string_view>

namespace rdl::writers {

// Appends document text: line feeds and tabs are kept, other control characters dropped.
void AppendRtf(std::string_view text, std::string& out);
// Appends a name in one line: a font name, a title.
void AppendRtfName(std::string_view text, std::string& out);
// A control word with a number: \li240.
void AppendWord(const char* word, int number, std::string& out);
// The same for a length in points, written in twips (1/20 point).
void AppendTwips(const char* word, double points, std::string& out);

}  // namespace rdl::writers
