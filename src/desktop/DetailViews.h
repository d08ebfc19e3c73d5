// The three views of the current Desktop window's list. The table is not a mere change of view: the list is
// filled anew, with columns.
#pragma once

#include <string>

void mnuIcons_Click();
void mnuViewList_Click();
void mnuDetails_Click();

// The current window's list as table of a folder. Errors pass to the caller.
void bldDetails(const std::string& folderName);
// The same of a package; 3021 when there is none of that name.
void batchDetails(const std::string& batchName);
