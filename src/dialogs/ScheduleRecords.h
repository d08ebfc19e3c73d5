// SPDX-License-Identifier: GPL-3.0-or-later
// Operations on the record of a single schedule and on the rows that depend on it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/contracts/adodb.h"
#include "platform/contracts/runtime.h"

namespace Global {

// Return the key of a folder or schedule by its name: 0 if there is no such row, the first row if there are
// several. Values are concatenated without escaping. Errors pass to the caller: 6 "Overflow" for a key above
// 32767.
std::int16_t GetFolderID(const std::string& folderName);
// `parent` is the name of the folder that holds the schedule.
std::int16_t GetScheduleID(const std::string& title, const std::string& parent);

// The row of a new schedule. No value is escaped. Dates are texts as FormatDateText writes them.
struct NewSchedule {
    std::string sendTo;
    std::string subject;
    std::string message;
    std::string startDate;
    std::string endDate;
    std::string runAt;  // HH:MM
    std::string frequency;
    std::string nextRun;
    std::string reportPath;  // of the copy in the cache
    std::string title;
    std::string selectionForm;
    std::string format;
    std::string parent;        // the folder's name
    std::string originalPath;  // of the user's file
    std::string userName;
    std::string password;
    std::string loginReq;  // "T" or "F"
};

// Inserts the row. Errors pass to the caller.
void InsertSchedule(ADODB::Connection& connection, const NewSchedule& schedule);

// The fields that a change of a schedule writes. Dates, next run and paths are not among them.
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
    // The statement holds both. If one is missing, it cannot be built and the change fails with 13.
    std::optional<std::string> userName;
    std::optional<std::string> password;
};

// Writes the change. An error is shown, gives false and leaves the row unchanged.
bool UpdateSchedule(const Variant& reportID, const ScheduleChange& change);
// The same on the caller's connection. Errors pass to the caller.
void UpdateSchedule(ADODB::Connection& connection, const Variant& reportID, const ScheduleChange& change);

// Deletes a schedule, its parameter values and its history. The copy of its report stays in the cache,
// because another schedule may run it. Errors pass to the caller; rows deleted before an error stay deleted.
void DeleteSchedule(const Variant& reportID);
void DeleteSchedule(ADODB::Connection& connection, const Variant& reportID);

}  // namespace Global
