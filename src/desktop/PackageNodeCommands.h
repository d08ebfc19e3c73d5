// Commands of the Schedule History window on the selected node of tvBatch when that is a package or a report
// of one. Errors are shown; nothing that was done before is taken back.
//
// They are no copies of the Desktop's: a report that is taken out here takes the parameter values of all
// reports of its package along, and leaves an empty package where it is.
#pragma once

// Deletes the package, or takes the report out of its package. Both ask first. The node stays in the tree
// until a click on its tab.
void mnuDir_Click();
// Opens the file that the report's last run left.
void mnuOutput_Click();
// Asks for the report's parameter values anew.
void mnuEditPar_Click();
