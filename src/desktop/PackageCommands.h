// Commands of the Desktop on the selected item when that is a package or a report of one. Errors are shown;
// nothing that was done before is taken back.
#pragma once

// Deletes the package, or takes the report out of its package; a package that becomes empty goes, too. Both
// ask first.
void mnubtcDelSel_Click();
// Opens the file that the report's last run left.
void mnubtcOutput_Click();
// Asks for the report's parameter values anew.
void mnubtcPar_Click();
