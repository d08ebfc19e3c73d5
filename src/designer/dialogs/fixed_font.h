// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>

namespace designer {

// Returns the family for texts whose characters are all of one width. Nothing else is set: a widget that gets
// this font keeps the size of the application's font, and follows it.
QFont FixedFont();

}  // namespace designer
