// Entries of the context menus of a Desktop window's list. All act on the window that was activated last.
#pragma once

void mnuDeskNew_Click();     // adds an item for a new folder, on the screen only
void mnuDeskOpen_Click();    // acts as a double click
void mnuRename_Click();      // edits the item's text
void mnuDeskDelfld_Click();  // deletes the folder
void mnuDeskDel_Click();     // does nothing: the toolbar deletes reports
void mnuDeskProp_Click();    // opens Report Properties of the schedule; shows every error but 91
void mnuDeskRpt_Click();     // runs whenever the context menu of a report opens
