// SPDX-License-Identifier: GPL-3.0-or-later
// Commands that open something outside the system: the help, the support page, the editor (from the tray
// menu) and the designer of reports. If it cannot be opened, nothing is shown.
#pragma once

void mnuHelp_Click();
void mnuSupport_Click();
void mnutbLoad_Click();
// Opens the report file of the schedule that is selected in the active Desktop window. Errors while its path
// is read are shown.
void mnuDesign_Click();
