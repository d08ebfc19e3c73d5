// Entries of the context menus of a Desktop window's list. All act on the window that was activated last.
#pragma once

// Greys the entries of all menus that act on a Desktop window, or on what is selected there, while that is
// missing: all that they could do is to end in an error.
void GreyDeskEntries();

void mnuDeskNew_Click();     // an item for a folder, on the screen only
void mnuDeskOpen_Click();    // as a double click
void mnuRename_Click();      // edits the item's text
void mnuDeskDelfld_Click();  // deletes the folder
void mnuDeskDel_Click();     // nothing: reports are deleted by the toolbar
void mnuDeskProp_Click();    // Report Properties of the schedule; shows its errors, but for 91
void mnuDeskRpt_Click();     // whenever the menu of a report opens
