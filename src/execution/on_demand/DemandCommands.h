// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the Desktop that run the selected item at once, whatever its dates say. The next run stays
// where it is.
#pragma once

// Runs the selected schedule. An error leaves a history row without a status and shows a box.
void mnuDeskExec_Click();
// Runs the selected package. It has no error handler: an error ends the process. A mail that fails leaves the
// history row and the alert of a failed poll; no box is shown.
void mnubtcExec_Click();
