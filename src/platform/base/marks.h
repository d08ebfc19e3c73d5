// SPDX-License-Identifier: GPL-3.0-or-later
// The marks ' that begin and end a text in a statement. A value without them can stand in any statement; the
// description of an error has " in their place (WithoutMarks of platform/contracts/runtime.h).
#pragma once

#include <string>
#include <string_view>

#include "platform/base/convert.h"

// Returns the text without any mark.
inline std::string WithoutMark(std::string_view text) {
    return Replace(text, "'", "");
}

// Returns the text with each mark twice, as it stands between marks.
inline std::string DoubledMarks(std::string_view text) {
    return Replace(text, "'", "''");
}

// Returns the text as a statement holds it: between marks, with each mark inside twice.
inline std::string SqlText(std::string_view text) {
    return "'" + DoubledMarks(text) + "'";
}
