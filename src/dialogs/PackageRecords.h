// The rows of a new package: its own, one for each report, and their parameter values, which wait in tmpPar
// until then under the texts of the wizard's report lines.
//
// Values are put between ' marks as they stand.
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
    std::string destination;  // folder, with its backslash
    std::string name;
    std::string mailBatch;  // "T" or "F"
};

void InsertPackage(ADODB::Connection& connection, const NewPackage& package);
// Of the package inserted last. 6 "Overflow" above 32767.
std::int16_t NewestPackageID();
void InsertPackageReport(ADODB::Connection& connection, std::int16_t packageID, const std::string& title,
                         const std::string& path, const std::string& format);
// The waiting values of every report of the package, in the order in which they were entered.
void InsertPackageParameters(ADODB::Connection& connection, std::int16_t packageID);

void DeleteWaitingParameters(ADODB::Connection& connection);

}  // namespace Global
