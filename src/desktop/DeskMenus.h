// SPDX-License-Identifier: GPL-3.0-or-later
// Entries of the context menus of a Desktop window's list. All act on the window that was activated last.
#pragma once

#include <optional>
#include <string>

// Returns whether the window or item that the entry needs exists; nullopt if it needs neither.
std::optional<bool> HasWhatItActsOn(const std::string& entry);

void mnuDeskNew_Click();     // an item for a folder, on the screen only
void mnuDeskOpen_Click();    // as a double click
void mnuRename_Click();      // edits the item's text
void mnuDeskDelfld_Click();  // deletes the folder
void mnuDeskDel_Click();     // does nothing: the toolbar deletes reports
void mnuDeskProp_Click();    // opens Report Properties of the schedule; shows every error but 91
void mnuDeskRpt_Click();     // runs whenever the context menu of a report opens
