// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/PackagePreview.h"

#include "execution/Preview.h"
#include "execution/RunReport.h"
#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace Global {

void PreviewPackageReport(const std::string& condition) {
    ADODB::Recordset rows;
    rows.Open(
        "select r.DetailID, ReportPath, ParValue, UserName, Password From ReportBatchDtls r  left outer join "
        "ReportBatchPar x on r.ReportID = x.ReportID and  r.DetailID = x.DetailID Where " +
            condition,
        ConnectionString);
    std::string path;
    if (!rows.EOF_()) {
        path = rows.Fields("ReportPath").Value.Text();
    }
    BusyCursor(true);
    report::Report& report = OpenReport(path);
    BusyCursor(false);
    const int fields = report.ParameterFieldCount();
    for (int field = 1; field <= fields; ++field) {
        HandOverParameter(report, field, rows.Fields("ParValue").Value, OtherFieldRule::HandOver);
        rows.MoveNext();
    }
    rows.Close();
    ShowPreview();
}

}  // namespace Global
