// SPDX-License-Identifier: GPL-3.0-or-later
// The items of a Desktop window's list, and the rows that they come from.
#pragma once

#include <string>

#include "platform/contracts/dates.h"
#include "platform/controls/items/list_view.h"

// The kind of an item, by its Icon.
namespace desk {

inline constexpr int FolderItem = 1;
inline constexpr int ScheduleItem = 2;
inline constexpr int PackageItem = 9;
inline constexpr int PackageReportItem = 10;
// Pictures of the folder tree.
inline constexpr int TreeRoot = 3;
inline constexpr int TreeFolder = 4;

// Empties the list and adds the schedules of a folder, sorted by title. If they cannot be read, the list
// stays unchanged. `smallIcon` 0 gives the items no small picture. Errors pass to the caller.
void ShowSchedules(ListView& list, const std::string& folderName, int smallIcon);
// Adds the folders whose parent is `parentID`, a number as text. Errors pass to the caller.
void AddFolders(ListView& list, const std::string& parentID, int smallIcon);

// Returns the seconds from 27 February 1977 to a moment; they make the keys of new folders unique. Raises 6
// "Overflow" if the number does not fit in 32 bits.
int SecondsOfKey(DateValue moment);

}  // namespace desk
