// The font that a report names for all its text.
#pragma once

#include "rdl/definition/model.h"

namespace rdl {

// Puts the family into every run that names none. Does nothing when it is not set or an expression.
void ApplyDefaultFont(Definition& definition, const Expr& font);

}  // namespace rdl
