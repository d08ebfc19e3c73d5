// SPDX-License-Identifier: GPL-3.0-or-later
// How commands on the selected item end.
#pragma once

#include "execution/RunReport.h"
#include "platform/contracts/runtime.h"
#include "shared/Global.h"

// Runs a command with the busy pointer; the command ends that itself. Shows the box of an error, but none if
// no item is selected: then there is nothing to do.
template <typename Command>
void OnSelection(Command command) {
    try {
        Global::BusyCursor(true);
        command();
    } catch (...) {
        const RuntimeError error = CurrentError();
        if (error.Number() == err::ObjectNotSet) {
            Global::BusyCursor(false);
            return;
        }
        Global::ShowError(error);
    }
}
