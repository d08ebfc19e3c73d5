// SPDX-License-Identifier: GPL-3.0-or-later
// Commands that show a report on the screen.
#pragma once

// Previews the package report that is selected in the Desktop window. It has no error handler: an error ends
// the process.
void mnubtcRun_Click();
// Previews the schedule that is selected in the Desktop window. Errors are shown.
void mnuDeskView_Click();
