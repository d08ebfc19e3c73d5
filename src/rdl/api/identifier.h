// SPDX-License-Identifier: GPL-3.0-or-later
// The rule for names in report files.
#pragma once

#include <string_view>

#include "rdl/values/ascii.h"  // IsNameByte, for callers that search a text for names

namespace rdl {

// Whether the UTF-8 text is an identifier: a letter or _, then letters, digits, connectors and combining
// marks of any script. Names appear in expressions, columns and statements, so nothing else is allowed.
bool IsIdentifier(std::string_view name);

}  // namespace rdl
