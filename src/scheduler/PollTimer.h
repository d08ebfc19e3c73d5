// SPDX-License-Identifier: GPL-3.0-or-later
// Turns the poll timer of the main window on and off.
#pragma once

#include "shared/Global.h"

namespace Global {

// Does nothing without a main window.
inline void EnableTimer1(bool enabled) {
    if (Frame != nullptr) {
        Frame->EnableTimer1(enabled);
    }
}

}  // namespace Global
