// The items of a Desktop window's list and the rows that they come from.
#pragma once

#include <string>

#include "platform/contracts/dates.h"
#include "platform/controls/items/list_view.h"

// What an item is, by its Icon.
namespace desk {

inline constexpr int FolderItem = 1;
inline constexpr int ScheduleItem = 2;
inline constexpr int PackageItem = 9;
inline constexpr int PackageReportItem = 10;
// Pictures of the tree.
inline constexpr int TreeRoot = 3;
inline constexpr int TreeFolder = 4;

// Empties the list, then adds the schedules of a folder by title. When they cannot be read the list stays as
// it was. `smallIcon` 0: the items have no small picture.
void ShowSchedules(ListView& list, const std::string& folderName, int smallIcon);
// Adds the folders below one, which is a number as text.
void AddFolders(ListView& list, const std::string& parentID, int smallIcon);

// Seconds from 27 February 1977 to a moment: what makes the keys of new folders differ. 6 "Overflow" when 32
// bits do not hold them.
int SecondsOfKey(DateValue moment);

}  // namespace desk
