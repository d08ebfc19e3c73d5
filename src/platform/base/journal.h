// SPDX-License-Identifier: GPL-3.0-or-later
// Dated lines on standard error, for every outcome that the system shows nowhere else: no row, no box, no
// mail.
#pragma once

#include <string_view>

// Writes "2026-11-22 07:00:03 " (local time), the text and a line feed in one call, so that lines of two
// processes do not mix. Control characters become blanks: a text is one line. Never fails.
void Journal(std::string_view text);
