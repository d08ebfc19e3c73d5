// Entries of the context menus of a Desktop window's list. All act on the window that was activated last.
#pragma once

// Greys the entries of all menus that act on a Desktop window, or on what is selected there, while that is
// missing: all that they could do is to end in an error.
void GreyDeskEntries();

void mnuDeskNew_Click();     // an item for a folder, on the screen only
void mnuDeskOpen_Click();    // as a double click
void mnuRename_Click();      // edits the item's text
void mnuDeskDelfld_Click();  // deletes the folder
void mnuDeskDel_Click();     // does nothing: the toolbar deletes reports
void mnuDeskProp_Click();    // opens Report Properties of the schedule; shows every error but 91
void mnuDeskRpt_Click();     // runs whenever the context menu of a report opens
