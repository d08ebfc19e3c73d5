// Commands that show a report on the screen.
#pragma once

// The report of a package that is selected in the Desktop window. No handler: an error ends the process.
void mnubtcRun_Click();
// The schedule that is selected in the Desktop window.
void mnuDeskView_Click();
