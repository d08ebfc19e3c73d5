// Operations on the record of a single schedule and on what hangs on it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/contracts/runtime.h"

namespace Global {

// Keys by name; 0 when nothing bears it, the first row when several do. Values are concatenated as they are.
// Errors pass to the caller, 6 "Overflow" for a key that 16 bits do not hold.
std::int16_t GetFolderID(const std::string& folderName);
// `parent` is the name of the folder that holds the schedule.
std::int16_t GetScheduleID(const std::string& title, const std::string& parent);

// What a change of a schedule writes. Dates, next run and paths are not among it.
struct ScheduleChange {
    std::string title;
    std::string sendTo;
    std::string subject;
    std::string message;
    std::string runAt;
    std::string frequency;
    std::string format;
    std::string selectionForm;
    std::string parent;    // the folder's name
    std::string loginReq;  // "T" or "F"
    // The statement holds both: without one of them it cannot be built, and the change fails with 13.
    std::optional<std::string> userName;
    std::optional<std::string> password;
};

// False after an error box, and nothing is changed.
bool UpdateSchedule(const Variant& reportID, const ScheduleChange& change);

// Removes a schedule, its parameter values and its history. The report's copy stays in the cache: another
// schedule may run it. Errors pass to the caller; what was removed before them stays removed.
void DeleteSchedule(const Variant& reportID);

}  // namespace Global
