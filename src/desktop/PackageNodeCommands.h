// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the Schedule History window on the selected package or package report in tvBatch. Errors are
// shown; what was done before an error stays done.
//
// They differ from the commands of the Desktop: removing a report here also deletes the parameter values of
// all reports of its package and keeps a package that becomes empty.
#pragma once

// Deletes the selected package, or removes the selected report from its package. Both ask first. The node
// stays in the tree until the user clicks its tab.
void mnuDir_Click();
// Opens the output file of the report's last run.
void mnuOutput_Click();
// Asks for the report's parameter values again and stores them.
void mnuEditPar_Click();
