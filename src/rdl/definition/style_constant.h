// SPDX-License-Identifier: GPL-3.0-or-later
// The constants of styles that the readers of a definition pass on while they read.
#pragma once

#include <functional>

#include "rdl/definition/model.h"

namespace rdl {

// Takes a constant of a style, whose line and place are those of the report. It is called for each one, and
// for some of them several times.
using TakeStyleConstant = std::function<void(StyleProperty property, const Expr& constant)>;

}  // namespace rdl
