// SPDX-License-Identifier: GPL-3.0-or-later
// Every chart, gauge, bar code and subreport of the project's reports.
#include "../document/all_reports.h"
#include "designer/graphics/chart_parts.h"
#include "designer/graphics/chart_types.h"
#include "designer/graphics/gauge_parts.h"
#include "designer/graphics/item_parts.h"
#include "designer/graphics/part_tree.h"
#include "sales_report.h"

namespace designer::test {
namespace {

std::string ProblemOf(const Document& document, const std::filesystem::path& file) {
    try {
        reports::OpenRdlText(document.Bytes(), file);
        return {};
    } catch (const RuntimeError& error) {
        return error.Description();
    }
}

template <typename Work>
void ForEachItem(const Work& work) {
    for (const std::filesystem::path& file : AllReports()) {
        try {
            Document document(ReadBytes(file));
            for (const ReportItem& item : ReadReportItems(document).items) {
                work(file, document, item);
            }
        } catch (const SourceFlaw&) {
            continue;  // some are not well-formed
        }
    }
}

TEST(AllGraphics, WhatIsReadIsWrittenAsItIs) {
    int charts = 0, others = 0;
    ForEachItem([&](const std::filesystem::path& file, Document& document, const ReportItem& item) {
        const std::string before = document.Text();
        if (item.kind == "Chart" && HasChartDesign(document, item.id)) {
            PutChartDesign(document, item.id, ReadChartDesign(document, item.id));
            ++charts;
        } else if (item.kind == "Subreport") {
            PutSubreportDesign(document, item.id, ReadSubreportDesign(document, item.id));
            ++others;
        } else if (item.kind == "GaugePanel") {
            PutGauges(document, item.id, ReadGauges(document, item.id));
            ++others;
        } else if (HasBarcodeDesign(document, item.id)) {
            PutBarcodeDesign(document, item.id, ReadBarcodeDesign(document, item.id));
            ++others;
        }
        EXPECT_EQ(document.Text(), before) << file << " " << item.name;
        PartsOf(document, item.id);
    });
    EXPECT_GT(charts, 20);
    EXPECT_GT(others, 10);
}

TEST(AllGraphics, AnotherTypeOfAChartIsNoProblem) {
    ForEachItem([&](const std::filesystem::path& file, Document& document, const ReportItem& item) {
        if (item.kind != "Chart" || !HasChartDesign(document, item.id) ||
            !ProblemOf(document, file).empty()) {
            return;
        }
        for (const std::size_t type : {0u, 12u, 22u, 26u}) {
            ChartDesign design = ReadChartDesign(document, item.id);
            design.type = ChartTypes()[type].type;
            design.subtype = ChartTypes()[type].subtype;
            PutChartDesign(document, item.id, design);
            EXPECT_EQ(ProblemOf(document, file), "") << file << " " << item.name << " " << type;
        }
    });
}

}  // namespace
}  // namespace designer::test
