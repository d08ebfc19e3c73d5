// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the rows of a new package: the package, its reports, and their parameter values. Until then the
// values wait in the table tmpPar; their key is the text of the wizard's report line.
//
// Values stand between ' marks and are not escaped. Errors pass to the caller.
#pragma once

#include <cstdint>
#include <string>

#include "platform/contracts/adodb.h"

namespace Global {

struct NewPackage {
    std::string recipients;
    std::string frequency;
    std::string runTime;             // HH:MM
    std::string startDate, endDate;  // date texts; the first run is on the start date
    std::string subject, message;
    std::string destination;  // folder, ends in a backslash
    std::string name;
    std::string mailBatch;  // "T" or "F"
};

// Inserts the row of the package. Its next run is its start date.
void InsertPackage(ADODB::Connection& connection, const NewPackage& package);
// Returns the key of the package inserted last. Raises 6 "Overflow" for a key above 32767.
std::int16_t NewestPackageID();
void InsertPackageReport(ADODB::Connection& connection, std::int16_t packageID, const std::string& title,
                         const std::string& path, const std::string& format);
// Inserts the waiting values of every report of the package, in the order in which they were entered.
void InsertPackageParameters(ADODB::Connection& connection, std::int16_t packageID);

// Empties tmpPar.
void DeleteWaitingParameters(ADODB::Connection& connection);

}  // namespace Global
