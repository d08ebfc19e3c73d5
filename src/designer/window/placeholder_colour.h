// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace designer {

// A palette may have colours for texts and fields only; the colour for hints in empty lines is black then,
// also on black. If it can hardly be seen, the application gets one between its text and its fields.
void MendPlaceholderColour();

}  // namespace designer
