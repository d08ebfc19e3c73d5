// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a stored schedule: opens the report, exports it and mails it.
#pragma once

#include <string>

#include "platform/contracts/adodb.h"
#include "platform/contracts/report_engine.h"
#include "platform/contracts/runtime.h"

namespace Global {

// Runs one single schedule: opens its report file, logs its tables on if user and password are both given,
// hands over the stored parameter values by position, sets the formula unless it is empty, exports and mails.
// Returns true if the report was mailed. Returns false if the format word is unknown (nothing is exported) or
// if the mail of an HTML report failed, which reports itself. Every other failure is a run-time error that
// passes to the caller.
bool RunReport(const Variant& reportID, const std::string& reportPath, const Variant& message,
               const Variant& subject, const std::string& sendTo, const Variant& format,
               const std::string& selectionForm, const std::string& userName, const std::string& password);

// Calls RunReport with the fields of the current row of ReportScheduler. User and password are empty unless
// the row asks for a logon (LoginReq "T").
bool RunStoredSchedule(const ADODB::Recordset& row);

// Clears the current value of every parameter of CurrentReport. Raises 91 if no report is open.
void ClearReportParameters();

// Empties all slots of AttachmentList.
void ClearAttachmentList();

// Shows the hourglass over all windows and over the list of the current Desktop window, or the default
// pointer again.
void BusyCursor(bool busy);

// Logs every table of the report on with this user and password. Server and database stay as the report has
// them.
void LogTablesOn(report::Report& report, const std::string& userName, const std::string& password);

// What happens to a field of value type code 22: it gets the stored value unchanged, or error 424 is raised.
// The runner of packages raises it because it hands over an object that was never set.
enum class OtherFieldRule { HandOver, Fail };

// Hands a stored value over to parameter field `n` (from 1), converted to the field's value type. Raises 13
// for a value that cannot be converted. Ignores fields of unknown value types.
void HandOverParameter(report::Report& report, int n, const Variant& value, OtherFieldRule rule);

}  // namespace Global
