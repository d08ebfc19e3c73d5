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

TEST(AllGraphics, GroupsAndValuesThatComeAndGoAreNoProblem) {
    int charts = 0;
    ForEachItem([&](const std::filesystem::path& file, Document& document, const ReportItem& item) {
        if (item.kind != "Chart" || !HasChartDesign(document, item.id) ||
            !ProblemOf(document, file).empty() || ReadChartDesign(document, item.id).hasOtherGroups) {
            return;
        }
        ++charts;
        const std::string before = document.Text();
        const bool isOlder = IsOlderChart(document, item.id);
        const auto put = [&](const ChartDesign& design) {
            PutChartDesign(document, item.id, design);
            EXPECT_EQ(ProblemOf(document, file), "") << file << " " << item.name;
            EXPECT_FALSE(ReadChartDesign(document, item.id).hasOtherGroups) << file << " " << item.name;
        };
        ChartDesign design = ReadChartDesign(document, item.id);
        const auto level = [&](const std::vector<ChartGroup>& groups) {
            return isOlder ? static_cast<int>(groups.size()) + 1 : 1;
        };
        design.categories.push_back({NoElement, "=1+1", level(design.categories)});
        design.series.push_back({NoElement, "=2+2", level(design.series)});
        put(design);
        design = ReadChartDesign(document, item.id);
        ChartValue value = design.values.front();
        value.series = NoElement;
        value.copies.clear();
        value.label = "More";
        design.values.push_back(value);
        put(design);
        design = ReadChartDesign(document, item.id);
        design.values.erase(design.values.begin());
        design.categories.erase(design.categories.begin());
        FitLevels(design.categories);
        design.series.pop_back();
        put(design);
        while (document.Undo()) {
        }
        EXPECT_EQ(document.Text(), before);
    });
    EXPECT_GT(charts, 10);
}

TEST(AllGraphics, AnotherKindOfAGaugeIsNoProblem) {
    int gauges = 0;
    ForEachItem([&](const std::filesystem::path& file, Document& document, const ReportItem& item) {
        if (item.kind != "GaugePanel" || !ProblemOf(document, file).empty()) {
            return;
        }
        std::vector<GaugeDesign> designs = ReadGauges(document, item.id);
        for (GaugeDesign& design : designs) {
            design.kind = design.kind == GaugeKind::Dial     ? GaugeKind::Linear
                          : design.kind == GaugeKind::Linear ? GaugeKind::Dial
                                                             : design.kind;
        }
        designs.push_back({.kind = GaugeKind::Indicator, .value = "=1", .least = "0", .most = "2"});
        PutGauges(document, item.id, designs);
        EXPECT_EQ(ProblemOf(document, file), "") << file << " " << item.name;
        EXPECT_EQ(ReadGauges(document, item.id).size(), designs.size()) << file << " " << item.name;
        gauges += static_cast<int>(designs.size());
    });
    EXPECT_GT(gauges, 5);
}

}  // namespace
}  // namespace designer::test
