// Commands that open something outside the system: the help, the support page, the editor from the tray, a
// report in its designer. That it could not be opened is not reported.
#pragma once

void mnuHelp_Click();
void mnuSupport_Click();
void mnutbLoad_Click();
// The report file of the schedule that is selected in the active Desktop window. Errors on the way to its
// path are shown.
void mnuDesign_Click();
