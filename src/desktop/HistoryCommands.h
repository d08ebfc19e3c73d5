// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the Schedule History window.
#pragma once

void mnuView_Click();    // opens the window or brings it to the front
void mnuRefHis_Click();  // acts as F5 in the window
void mnuDel_Click();     // deletes the schedule of the selected node; the history of its runs stays
// Previews the selected report of a package. It has no error handler: an error ends the process.
void mnubView_Click();
