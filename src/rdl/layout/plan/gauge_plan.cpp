// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Planner: gauge panels.
#include "rdl/layout/plan/gauge_plan.h"

namespace rdl::layout {
namespace {

// Whether an expression asks for the panel's rows by its name.
bool NamesItself(const GaugePanel& panel) {
    const std::string quoted = "\"" + panel.name + "\"";
    bool names = false;
    WalkGauge(panel, [&](const Expr& source) {
        names = names || (source.IsExpression() && source.source.find(quoted) != std::string::npos);
    });
    return names;
}

}  // namespace

void Planner::Gauge(const GaugePanel& panel, ItemPlan& plan) {
    const std::string& dataSet = m_programs.DataSetOf(panel.data);
    const Tablix& data = panel.data;
    const bool asks = !data.filters.empty() || !data.sorts.empty() ||
                      !data.rowMembers.front().sorts.empty() || data.rowMembers.front().group ||
                      !data.rowMembers.front().members.empty();
    plan.gauge = std::make_unique<GaugePlan>();
    plan.gauge->definition = &panel;
    plan.gauge->programs = &m_programs;
    if (!dataSet.empty() && (!m_region || m_region->dataSet != dataSet || asks || NamesItself(panel))) {
        plan.gauge->data = Region(data);
    }
    // One place to click: a panel leads where the first of its gauges does that leads anywhere.
    for (const GaugeItem& item : panel.items) {
        if (!plan.hyperlink.isSet && !plan.bookmarkLink.isSet) {
            plan.hyperlink = Of(item.action.hyperlink);
            plan.bookmarkLink = Of(item.action.bookmarkLink);
        }
    }
    plan.plain = plan.plain && !plan.hyperlink.isSet && !plan.bookmarkLink.isSet;
}

}  // namespace rdl::layout
