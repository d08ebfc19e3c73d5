// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of a store and their columns, as store/schema.sql has them: a test compares both. What is
// missing here is not copied.
#pragma once

#include <array>
#include <string_view>

#include "platform/base/named.h"

namespace tools {

struct StoreTable {
    std::string_view name;
    std::string_view columns;
    bool hasKey;  // the first column is a key that the database gives
};

inline constexpr std::array<StoreTable, 10> StoreTables{{
    {"ReportScheduler",
     "ReportID,ReportTitle,ReportPath,OriginalPath,SendTo,Subject,Message,StartDate,EndDate,RunAt,Frequency,"
     "NextRun,Client,SelectionForm,Format,Parent,UserName,Password,LoginReq",
     true},
    {"ReportParameter", "ReportID,ParName,ParValue", false},
    {"ReportHistory", "ReportID,LastRun,Status,ErrMsg", false},
    {"ReportBatch",
     "ReportID,ClientName,BatchName,Recipients,Frequency,RunTime,StartDate,EndDate,NextRunDate,Subject,"
     "Message,Destination,MailBatch",
     true},
    {"ReportBatchDtls", "DetailID,ReportID,ReportTitle,ReportPath,ReportFormat,UserName,Password", true},
    {"ReportBatchPar", "ParID,ReportID,DetailID,ParValue", true},
    {"ReportBatchHstry", "ReportID,LastRun,Success,ErrMsg", false},
    {"Folders", "FolderID,FolderName,Parent", true},
    {"tmpPar", "rptName,parName,parValue", false},
    {"clients", "Name", false},
}};
static_assert(NamesDiffer(StoreTables));

}  // namespace tools
