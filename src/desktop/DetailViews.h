// SPDX-License-Identifier: GPL-3.0-or-later
// The three views of the current Desktop window's list. The table view is more than another display: it fills
// the list again, with columns.
#pragma once

#include <string>

void mnuIcons_Click();
void mnuViewList_Click();
void mnuDetails_Click();

// Shows the current window's list as a table of a folder. Errors pass to the caller.
void bldDetails(const std::string& folderName);
// Shows it as a table of a package. Raises 3021 if there is no package of that name.
void batchDetails(const std::string& batchName);
