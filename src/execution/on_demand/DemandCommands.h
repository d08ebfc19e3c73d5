// Commands of the Desktop that run the selected item at once, whatever its dates say. Neither moves a next
// run.
#pragma once

// A single schedule. An error leaves a history row without a status, and a box.
void mnuDeskExec_Click();
// A package. No handler: an error ends the process. A mail that fails leaves the row and the alert of a
// failed poll, and the user is told nothing here.
void mnubtcExec_Click();
