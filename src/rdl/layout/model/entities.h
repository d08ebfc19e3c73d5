// SPDX-License-Identifier: GPL-3.0-or-later
// The named entities of HTML 4.
#pragma once

#include <string_view>

namespace rdl::layout {

// Returns the character of an entity, by its name without & and ;, whose case counts. 0 if there is none.
char32_t CharacterOfEntity(std::string_view name);

}  // namespace rdl::layout
