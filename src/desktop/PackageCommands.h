// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the Desktop on the selected package or package report. Errors are shown; what was done before
// an error stays done.
#pragma once

// Deletes the selected package, or removes the selected report from its package. A package without reports is
// deleted too. Both ask first.
void mnubtcDelSel_Click();
// Opens the output file of the report's last run.
void mnubtcOutput_Click();
// Asks for the report's parameter values again and stores them.
void mnubtcPar_Click();
