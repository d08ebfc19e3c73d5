// Commands of the Schedule History window.
#pragma once

void mnuView_Click();    // opens the window, or brings it to the front
void mnuRefHis_Click();  // as F5 in it
void mnuDel_Click();     // deletes the schedule of the selected node; its runs stay in the history
// Runs the schedule of the selected node now, with the hourglass up, and fills the window anew. An error
// leaves a history row without a status, and a box.
void mnuExec_Click();
// The selected report of a package on the screen. No handler: an error ends the process.
void mnubView_Click();
