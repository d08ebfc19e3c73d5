// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the Schedule History window.
#pragma once

void mnuView_Click();    // opens the window or brings it to the front
void mnuRefHis_Click();  // acts as F5 in the window
void mnuDel_Click();     // deletes the schedule of the selected node; the history of its runs stays
// Runs the schedule of the selected node now, under the hourglass, and fills the window again. An error
// leaves a history row without a status and shows a box.
void mnuExec_Click();
// Previews the selected report of a package. It has no error handler: an error ends the process.
void mnubView_Click();
