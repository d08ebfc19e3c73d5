// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a single schedule with its values, for the commands and for import and export.
#pragma once

#include <string>

#include "tools/oxc_schedule/command_output.h"
#include "tools/oxc_schedule/records.h"

namespace tools {

// Inserts the schedule and its values under the key that it gets (NextKey).
void InsertScheduleRows(ADODB::Connection& connection, const StoredSchedule& schedule);

// Puts these values in the place of the stored ones.
void ReplaceValues(ADODB::Connection& connection, const std::string& reportID, const NamedValues& values);

// Refuses a change that was computed from `stored` if the row has other values by now. Inside the transaction
// that writes the change.
void RefuseChanged(const StoredSchedule& stored);

// Returns true if everything that a user sets is equal, the password, too.
bool IsSame(const StoredSchedule& one, const StoredSchedule& other);

// Returns the fields that a user sets, as JSON, without the password. The path is written as users write it.
QJsonObject ScheduleFields(const StoredSchedule& schedule);

// Returns what a command with --json prints of the schedule that it has made or changed.
QJsonObject Result(const std::string& id, const std::string& title, const std::string& folder,
                   const std::string& next);
QJsonObject Result(const StoredSchedule& schedule);

// Returns the title and the folder for a sentence.
std::string Named(const Global::NewSchedule& row);

}  // namespace tools
