// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the Desktop and of the Schedule History that run the selected item at once, whatever its dates
// say. The next run stays where it is.
#pragma once

class HistoryFrame;

// Runs the selected schedule. An error leaves a history row without a status and shows a box.
void mnuDeskExec_Click();
// Runs the selected package. It has no error handler: an error ends the process. A mail that fails leaves the
// history row and the alert of a failed poll; no box is shown.
void mnubtcExec_Click();
// Runs the selected schedule of the history under the hourglass, and fills the window again. A node with
// others below it runs nothing. An error leaves a history row without a status and shows a box. `history`
// returns the window, which it makes if the user closed it during the run.
void mnuExec_Click(HistoryFrame& (*history)());
