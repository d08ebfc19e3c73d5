// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the rows of a new package: the package, its reports, and their parameter values. Until then the
// values wait in the table tmpPar; their key is the text of the wizard's report line.
//
// Values stand between ' marks and are not escaped. Errors pass to the caller.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/contracts/adodb.h"

namespace Global {

struct NewPackage {
    std::string recipients;
    std::string frequency;
    std::string runTime;                          // HH:MM
    std::string startDate, endDate, nextRunDate;  // date texts
    std::string subject, message;
    std::string destination;  // folder, ends in a backslash
    std::string name;
    std::string mailBatch;  // "T" or "F"
};

// Inserts the row of the package.
void InsertPackage(ADODB::Connection& connection, const NewPackage& package);
// Returns the key of the package inserted last. Raises 6 "Overflow" for a key above 32767.
std::int16_t NewestPackageID();
void InsertPackageReport(ADODB::Connection& connection, std::int16_t packageID, const std::string& title,
                         const std::string& path, const std::string& format);
// Inserts one parameter value of a package's report.
void InsertPackageValue(ADODB::Connection& connection, const std::string& packageID,
                        const std::string& detailID, const std::string& value);
// Inserts the waiting values of every report of the package, in the order in which they were entered.
void InsertPackageParameters(ADODB::Connection& connection, std::int16_t packageID);

// Deletes a package, its reports and their parameter values, in this order, without a transaction: after a
// failed statement the later ones are not run. The history of its runs stays.
void DeletePackage(ADODB::Connection& connection, const std::string& reportID);

// Replaces the stored values of a package's report. `condition` finds the stored rows.
void ReplacePackageValues(const std::string& reportID, const std::string& detailID,
                          const std::string& condition, const std::vector<std::string>& values);
void ReplacePackageValues(ADODB::Connection& connection, const std::string& reportID,
                          const std::string& detailID, const std::string& condition,
                          const std::vector<std::string>& values);

// Empties tmpPar.
void DeleteWaitingParameters(ADODB::Connection& connection);

}  // namespace Global
