// From a stored schedule to delivered output.
#pragma once

#include <string>

#include "platform/contracts/adodb.h"
#include "platform/contracts/report_engine.h"
#include "platform/contracts/runtime.h"

namespace Global {

// Runs one single schedule: opens its report file, logs its tables on (only with a user and a password),
// hands over the stored parameter values by position, sets the formula unless it is empty, exports and mails.
// True: the report went out. False: the format word is not known (nothing happened), or the mail of an HTML
// report failed and has reported itself. Every other failure is a run-time error that passes to the caller.
bool RunReport(const Variant& reportID, const std::string& reportPath, const Variant& message,
               const Variant& subject, const std::string& sendTo, const Variant& format,
               const std::string& selectionForm, const std::string& userName, const std::string& password);

// RunReport with the fields of the current row of ReportScheduler; user and password only when it asks for a
// logon.
bool RunStoredSchedule(const ADODB::Recordset& row);

// Drops the values that are saved in the open report.
void ClearReportParameters();

// Empties the package run's file names.
void ClearAttachmentList();

// The hourglass over the screen and the current Desktop window's list, or both back to normal.
void BusyCursor(bool busy);

// Logs every table of the report on, with server and database as the report has them.
void LogTablesOn(report::Report& report, const std::string& userName, const std::string& password);

// What a field of value type code 22 gets: the stored value as it is, or error 424 where the runner hands
// over an object that it never set.
enum class OtherFieldRule { HandOver, Fail };

// Hands a stored value over to parameter field n (from 1) as the field's value type asks. Codes that no
// runner knows get nothing.
void HandOverParameter(report::Report& report, int n, const Variant& value, OtherFieldRule rule);

}  // namespace Global
