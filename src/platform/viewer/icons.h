// SPDX-License-Identifier: GPL-3.0-or-later
// Icons of the viewer's buttons, drawn in the colours of the window so that they suit light and dark
// desktops.
#pragma once

#include <QIcon>
#include <QPalette>

namespace viewer {

enum class Symbol {
    First,
    Previous,
    Next,
    Last,
    ZoomOut,
    ZoomIn,
    FitWidth,
    FitPage,
    Find,
    Print,
    Save,
    Map,
    Close
};

QIcon IconOf(Symbol symbol, const QPalette& palette);

}  // namespace viewer
