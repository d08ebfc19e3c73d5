// Operations on the record of a single schedule and on what hangs on it.
#pragma once

#include <cstdint>
#include <string>

namespace Global {

// Keys by name; 0 when nothing bears it, the first row when several do. Values are concatenated as they are.
// Errors pass to the caller, 6 "Overflow" for a key that 16 bits do not hold.
std::int16_t GetFolderID(const std::string& folderName);
// `parent` is the name of the folder that holds the schedule.
std::int16_t GetScheduleID(const std::string& title, const std::string& parent);

}  // namespace Global
