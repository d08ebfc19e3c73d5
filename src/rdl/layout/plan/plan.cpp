// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/plan/plan.h"

#include <algorithm>

#include "rdl/definition/barcode.h"
#include "rdl/layout/plan/gauge_plan.h"
#include "rdl/layout/plan/map_plan.h"

namespace rdl::layout {
std::unique_ptr<BackgroundPlan> BackgroundPlan::Of(const Style& style, const Programs& programs,
                                                   bool forChart) {
    if (!style.Find(StyleProperty::BackgroundImageValue)) {
        return nullptr;
    }
    const auto part = [&](StyleProperty name) {
        const Expr* found = style.Find(name);
        return found ? Property(*found, programs) : Property();
    };
    auto plan = std::make_unique<BackgroundPlan>();
    plan->source = part(StyleProperty::BackgroundImageSource);
    plan->value = part(StyleProperty::BackgroundImageValue);
    plan->type = part(StyleProperty::BackgroundImageType);
    plan->repeat = part(StyleProperty::BackgroundRepeat);
    plan->position = part(StyleProperty::BackgroundPosition);
    plan->isChart = forChart;
    return plan;
}

ItemPlan::ItemPlan() = default;
ItemPlan::~ItemPlan() = default;

PageBreakPlan Planner::Break(const PageBreak& source) const {
    return {source.location, Of(source.disabled), Of(source.resetPageNumber), Of(source.pageName)};
}

std::vector<FilterPlan> Planner::Filters(const std::vector<Filter>& filters) const {
    std::vector<FilterPlan> plans;
    for (const Filter& filter : filters) {
        FilterPlan plan{
            Of(filter.expression), expr::CheckedFilterOperator(filter.op, filter.values.size()), {}};
        for (const Expr& value : filter.values) {
            plan.values.push_back(Of(value));
        }
        plans.push_back(std::move(plan));
    }
    return plans;
}

std::vector<SortPlan> Planner::Sorts(const std::vector<Sort>& sorts) const {
    std::vector<SortPlan> plans;
    plans.reserve(sorts.size());
    for (const Sort& sort : sorts) {
        plans.push_back({Of(sort.value), sort.descending});
    }
    return plans;
}

ParagraphPlan Planner::ParagraphOf(const Paragraph& paragraph, const Style& boxStyle) const {
    const auto inherited = [&](StyleProperty name, const Style* inner) {
        for (const Style* style : {inner, &paragraph.style, &boxStyle}) {
            if (const Expr* found = style ? style->Find(name) : nullptr) {
                return Of(*found);
            }
        }
        return Property();
    };
    ParagraphPlan plan;
    plan.definition = &paragraph;
    plan.align = inherited(StyleProperty::TextAlign, nullptr);
    plan.lineHeight = inherited(StyleProperty::LineHeight, nullptr);
    plan.leftIndent = Of(paragraph.leftIndent);
    plan.rightIndent = Of(paragraph.rightIndent);
    plan.hangingIndent = Of(paragraph.hangingIndent);
    plan.spaceBefore = Of(paragraph.spaceBefore);
    plan.spaceAfter = Of(paragraph.spaceAfter);
    for (const TextRun& run : paragraph.runs) {
        RunPlan made;
        made.value = Of(run.value);
        made.hyperlink = Of(run.action.hyperlink);
        made.bookmarkLink = Of(run.action.bookmarkLink);
        made.style.Compile({&boxStyle, &paragraph.style, &run.style}, m_programs);
        made.formatValue = inherited(StyleProperty::Format, &run.style);
        if (made.formatValue.IsConstant() && made.formatValue.constant.IsText()) {
            made.format = made.formatValue.constant.AsText();
        }
        made.language = inherited(StyleProperty::Language, &run.style);
        made.html = run.html;
        plan.runs.push_back(std::move(made));
    }
    return plan;
}

std::unique_ptr<ItemPlan> Planner::Item(const ReportItem& item) {
    auto plan = std::make_unique<ItemPlan>();
    plan->definition = &item;
    plan->box.Compile({&item.style}, m_programs);
    plan->background = BackgroundPlan::Of(item.style, m_programs, item.kind == ItemKind::Chart);
    plan->hidden = Of(item.visibility.hidden);
    plan->hyperlink = Of(item.action.hyperlink);
    plan->bookmarkLink = Of(item.action.bookmarkLink);
    plan->toolTip = Of(item.toolTip);
    plan->bookmark = Of(item.bookmark);
    plan->documentMapLabel = Of(item.documentMapLabel);
    plan->pageBreak = Break(item.pageBreak);
    plan->plain = !plan->hyperlink.isSet && !plan->bookmarkLink.isSet && !plan->toolTip.isSet &&
                  !plan->bookmark.isSet && !plan->documentMapLabel.isSet;
    plan->region = m_region;
    plan->rowGroup = m_rowGroup;
    plan->columnGroup = m_columnGroup;
    Kinds(item, *plan);
    return plan;
}

namespace {

std::string ColumnOf(const Textbox& box, const ItemPlan& plan) {
    using Output = ReportItem::DataOutput;
    const auto isConstant = [](const ParagraphPlan& paragraph) {
        return std::all_of(paragraph.runs.begin(), paragraph.runs.end(),
                           [](const RunPlan& run) { return run.value.IsConstant(); });
    };
    const bool omits = box.dataOutput == Output::NoOutput ||
                       (box.dataOutput == Output::Auto &&
                        std::all_of(plan.paragraphs.begin(), plan.paragraphs.end(), isConstant));
    return omits ? std::string() : box.dataName.empty() ? box.name : box.dataName;
}

}  // namespace

void Planner::Kinds(const ReportItem& item, ItemPlan& plan) {
    switch (item.kind) {
        case ItemKind::Textbox: {
            const auto& box = static_cast<const Textbox&>(item);
            for (const Paragraph& paragraph : box.paragraphs) {
                plan.paragraphs.push_back(ParagraphOf(paragraph, box.style));
                plan.hasMarkup = plan.hasMarkup || std::any_of(paragraph.runs.begin(), paragraph.runs.end(),
                                                               [](const TextRun& run) { return run.html; });
            }
            plan.column = ColumnOf(box, plan);
            plan.hideDuplicates = box.hideDuplicates;
            m_hidesDuplicates = m_hidesDuplicates || !box.hideDuplicates.empty();
            break;
        }
        case ItemKind::Rectangle:
            plan.children = Items(static_cast<const Rectangle&>(item).items);
            break;
        case ItemKind::Image:
            plan.value = Of(static_cast<const Image&>(item).value);
            plan.mimeType = Of(static_cast<const Image&>(item).mimeType);
            break;
        case ItemKind::Subreport:
            for (const auto& [name, value] : static_cast<const Subreport&>(item).parameters) {
                plan.parameters.emplace_back(name, Of(value));
            }
            plan.noRows = Of(static_cast<const Subreport&>(item).noRows);
            plan.messageStyle.Compile({&item.style}, m_programs);
            break;
        case ItemKind::Tablix:
            plan.tablix = Region(static_cast<const Tablix&>(item));
            break;
        case ItemKind::Barcode: {
            const auto& barcode = static_cast<const Barcode&>(item);
            plan.value = Of(barcode.value);
            plan.barcode = std::make_unique<BarcodePlan>(
                BarcodePlan{Of(barcode.symbology), Of(barcode.showText), Of(barcode.errorCorrection)});
            plan.messageStyle.Compile({&item.style}, m_programs);
            break;
        }
        case ItemKind::Line:
            break;
        case ItemKind::Chart: {
            const auto& chart = static_cast<const Chart&>(item);
            plan.chart = std::make_unique<ChartPlan>(ChartPlan{&chart, Region(chart.data), &m_programs});
            break;
        }
        case ItemKind::Gauge:
            Gauge(static_cast<const GaugePanel&>(item), plan);
            break;
        case ItemKind::Map:
            plan.map = MapOf(static_cast<const Map&>(item));
            break;
    }
}

std::vector<std::unique_ptr<ItemPlan>> Planner::Items(const std::vector<ItemPtr>& items) {
    std::vector<const ReportItem*> layers;
    layers.reserve(items.size());
    for (const ItemPtr& item : items) {
        layers.push_back(item.get());
    }
    // If two have the same index, the later one is above.
    std::stable_sort(layers.begin(), layers.end(), [](const ReportItem* left, const ReportItem* right) {
        return left->zIndex < right->zIndex;
    });
    std::vector<std::pair<const ReportItem*, int>> sorted;
    sorted.reserve(items.size());
    for (const ReportItem* item : layers) {
        sorted.emplace_back(item, static_cast<int>(sorted.size()));
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& left, const auto& right) {
        return left.first->top != right.first->top ? left.first->top < right.first->top
                                                   : left.first->left < right.first->left;
    });
    std::vector<std::unique_ptr<ItemPlan>> plans;
    plans.reserve(sorted.size());
    for (const auto& [item, layer] : sorted) {
        plans.push_back(Item(*item));
        plans.back()->layer = layer;
    }
    return plans;
}

}  // namespace rdl::layout
