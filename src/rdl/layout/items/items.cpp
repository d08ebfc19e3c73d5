// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/items/items.h"

#include <algorithm>

#include "rdl/expr/operations/compare.h"
#include "rdl/layout/drawing/barcode.h"
#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/gauge/draw.h"
#include "rdl/layout/drawing/map/draw.h"
#include "rdl/layout/items/tablix_table.h"
#include "rdl/layout/model/links.h"
#include "rdl/layout/model/markup.h"
#include "rdl/layout/model/units.h"
#include "rdl/values/error.h"

namespace rdl::layout {
namespace {

constexpr int MaxDepth = 64;

void Clear(Instance& out) {
    out.x = out.y = out.width = out.height = 0;
    out.hyperlink.clear();
    out.bookmark.clear();
    out.bookmarkLink.clear();
    out.documentMapLabel.clear();
    out.toolTip.clear();
    out.value = Value();
    out.format.clear();
    out.language.clear();
    out.canGrow = out.canShrink = out.isNumeric = false;
    out.imageBytes.reset();
    out.mimeType.clear();
    out.children.clear();
    out.keepTogether = out.breakBefore = out.breakAfter = out.resetPageNumber = false;
    out.omitBorder = out.consumeSpace = false;
    out.pageName.clear();
    out.repeatWith.clear();
    out.table.reset();
    out.drawing.reset();
    out.same = {};
}

bool IsAlignedRight(const Value& value) {
    return value.IsNumber() || value.kind() == Kind::DateTime || value.kind() == Kind::TimeSpan;
}

// A subreport's instances outlive the call that opened them; each of its tables keeps it alive.
void KeepAlive(Instance& item, const std::shared_ptr<ReportInstance>& report) {
    if (item.table) {
        item.table = std::shared_ptr<TableInstance>(report, item.table.get());
    }
    for (Instance& child : item.children) {
        KeepAlive(child, report);
    }
}

}  // namespace

float ItemBuilder::Size(const Property& property) {
    double points = 0;
    if (property.isSet && ParseSize(Text(property), points)) {
        return static_cast<float>(std::clamp(points, -2000.0, 2000.0));
    }
    return 0;
}

bool ItemBuilder::Fill(ItemPlan& plan, Instance& out) {
    if (IsTrue(plan.hidden)) {
        return false;
    }
    struct Deeper {
        explicit Deeper(int& depth) : m_depth(depth) { ++m_depth; }
        ~Deeper() { --m_depth; }
        int& m_depth;
    } const deeper(m_depth);
    if (m_depth > MaxDepth) {
        throw Error("Items are nested too deeply at \"" + plan.definition->name + "\"");
    }
    Clear(out);
    Common(plan, out);
    OfItsKind(plan, out);
    if (out.kind != InstanceKind::Text) {
        out.paragraphs.clear();
    }
    return true;
}

void ItemBuilder::OfItsKind(ItemPlan& plan, Instance& out) {
    switch (plan.definition->kind) {
        case ItemKind::Textbox:
            out.kind = InstanceKind::Text;
            TextOf(plan, out);
            break;
        case ItemKind::Line:
            out.kind = InstanceKind::Line;
            break;
        case ItemKind::Rectangle: {
            const auto& rectangle = static_cast<const Rectangle&>(*plan.definition);
            out.kind = InstanceKind::Container;
            out.keepTogether = rectangle.keepTogether;
            out.omitBorder = rectangle.omitBorderOnPageBreak;
            out.consumeSpace = m_input.definition->consumeContainerWhitespace;
            out.children = FillAll(plan.children);
            break;
        }
        case ItemKind::Image:
            out.kind = InstanceKind::Image;
            ImageOf(plan, out);
            break;
        case ItemKind::Tablix:
            out.kind = InstanceKind::Table;
            out.omitBorder = static_cast<const Tablix&>(*plan.definition).omitBorderOnPageBreak;
            out.table = MakeTable(*plan.tablix, m_evaluator.Current(), *this, out);
            break;
        case ItemKind::Subreport:
            out.kind = InstanceKind::Container;
            SubreportOf(plan, out);
            break;
        case ItemKind::Chart:
            ChartOf(plan, out);
            break;
        case ItemKind::Gauge:
            GaugeOf(plan, out);
            break;
        case ItemKind::Barcode:
            BarcodeOf(plan, out);
            break;
        case ItemKind::Map:
            MapOf(plan, out);
            break;
    }
}

// The report's own code may count its calls.
bool ItemBuilder::RepeatsWithoutRows(const ItemPlan& plan) const {
    return plan.definition->kind == ItemKind::Textbox && plan.hideDuplicates.empty() && !plan.background &&
           m_input.definition->code.empty();
}

bool ItemBuilder::MayBeLeftOut(const ItemPlan& plan) const {
    const ItemKind kind = plan.definition->kind;
    return (kind == ItemKind::Textbox || kind == ItemKind::Rectangle || kind == ItemKind::Line) &&
           plan.hideDuplicates.empty() && m_input.definition->code.empty() &&
           std::all_of(plan.children.begin(), plan.children.end(),
                       [this](const std::unique_ptr<ItemPlan>& child) { return MayBeLeftOut(*child); });
}

void ItemBuilder::Common(ItemPlan& plan, Instance& out) {
    const ReportItem& item = *plan.definition;
    out.x = item.left;
    out.y = item.top;
    out.width = item.width;
    out.height = item.height;
    out.name = item.name;
    out.column = plan.column;
    out.noOutput = item.dataOutput == ReportItem::DataOutput::NoOutput;
    out.box = BoxOf(plan.box, plan.background.get(), item.name);
    if (!plan.plain) {
        out.hyperlink = Text(plan.hyperlink);
        if (!IsHarmlessLink(out.hyperlink)) {
            out.hyperlink.clear();
        }
        out.bookmarkLink = Text(plan.bookmarkLink);
        out.bookmark = Text(plan.bookmark);
        out.documentMapLabel = Text(plan.documentMapLabel);
        out.toolTip = Text(plan.toolTip);
    }
    if (plan.pageBreak.location != PageBreak::Location::None && !IsTrue(plan.pageBreak.disabled)) {
        out.breakBefore = plan.pageBreak.AtStart();
        out.breakAfter = plan.pageBreak.AtEnd();
        out.resetPageNumber = IsTrue(plan.pageBreak.resetPageNumber);
    }
    if (plan.pageBreak.pageName.isSet) {
        out.pageName = Text(plan.pageBreak.pageName);
    }
    out.repeatWith = item.repeatWith;
    out.layer = plan.layer;
}

std::vector<Instance> ItemBuilder::FillAll(std::vector<std::unique_ptr<ItemPlan>>& plans) {
    std::vector<Instance> items;
    items.reserve(plans.size());
    for (const auto& plan : plans) {
        Instance item;
        if (Fill(*plan, item)) {
            items.push_back(std::move(item));
        }
    }
    return items;
}

bool ItemBuilder::IsDuplicate(ItemPlan& plan, const Value& value) {
    Scope before;
    if (m_showsDuplicates || !m_evaluator.PlaceBefore(plan.hideDuplicates, before)) {
        return false;
    }
    const Evaluator::Stay stay(m_evaluator);
    m_evaluator.Enter(before);
    return expr::Compare(plan.paragraphs.front().runs.front().value.Get(m_evaluator), value) == 0;
}

void ItemBuilder::TextOf(ItemPlan& plan, Instance& out) {
    const auto& box = static_cast<const Textbox&>(*plan.definition);
    out.canGrow = box.canGrow;
    out.canShrink = box.canShrink;
    out.keepTogether = box.keepTogether;
    const bool isOnlyRun = plan.paragraphs.size() == 1 && plan.paragraphs.front().runs.size() == 1;
    out.paragraphs.resize(plan.paragraphs.size());
    for (std::size_t i = 0; i < plan.paragraphs.size(); ++i) {
        ParagraphOf(plan.paragraphs[i], isOnlyRun, out, out.paragraphs[i]);
    }
    if (isOnlyRun && !plan.hideDuplicates.empty() && IsDuplicate(plan, out.value)) {
        out.paragraphs.front().runs.front().text.clear();
        out.value = Value();
    }
    if (plan.hasMarkup) {
        ReadMarkup(plan, out);
    }
    NumberLists(out.paragraphs);
}

void ItemBuilder::ReadMarkup(const ItemPlan& plan, Instance& out) const {
    std::vector<ParagraphInstance> expanded;
    for (std::size_t i = 0; i < out.paragraphs.size(); ++i) {
        std::vector<bool> isMarkup;
        for (const RunPlan& run : plan.paragraphs[i].runs) {
            isMarkup.push_back(run.html);
        }
        for (ParagraphInstance& paragraph : ExpandMarkup(out.paragraphs[i], isMarkup)) {
            expanded.push_back(std::move(paragraph));
        }
    }
    out.paragraphs = std::move(expanded);
    if (out.value.IsText()) {
        out.value = Value::Text(out.PlainText());
    }
}

void ItemBuilder::NumberLists(std::vector<ParagraphInstance>& paragraphs) const {
    constexpr std::size_t Levels = 10;
    int next[Levels] = {};
    for (ParagraphInstance& paragraph : paragraphs) {
        const auto level =
            std::min<std::size_t>(static_cast<std::size_t>(std::max(0, paragraph.listLevel)), Levels - 1);
        std::fill(next + level + 1, next + Levels, 0);
        if (paragraph.listNumber > 0) {
            paragraph.listNumber = ++next[level];
        } else if (!paragraph.bulleted) {
            next[level] = 0;
        }
    }
}

void ItemBuilder::ParagraphOf(ParagraphPlan& plan, bool isOnlyRun, Instance& out,
                              ParagraphInstance& paragraph) {
    paragraph.align = plan.align.isSet ? ParseHAlign(Text(plan.align)) : HAlign::General;
    paragraph.lineHeight = std::max(0.0F, Size(plan.lineHeight));
    paragraph.leftIndent = Size(plan.leftIndent);
    paragraph.rightIndent = Size(plan.rightIndent);
    paragraph.hangingIndent = Size(plan.hangingIndent);
    paragraph.spaceBefore = Size(plan.spaceBefore);
    paragraph.spaceAfter = Size(plan.spaceAfter);
    paragraph.listLevel = plan.definition->listLevel;
    paragraph.bulleted = plan.definition->listStyle == Paragraph::List::Bulleted;
    paragraph.listNumber = plan.definition->listStyle == Paragraph::List::Numbered ? 1 : 0;
    paragraph.runs.resize(plan.runs.size());
    for (std::size_t i = 0; i < plan.runs.size(); ++i) {
        RunOf(plan.runs[i], isOnlyRun, out, paragraph.runs[i]);
    }
}

void ItemBuilder::RunOf(RunPlan& plan, bool isOnlyRun, Instance& out, RunInstance& run) {
    const Culture& outer = m_evaluator.CurrentCulture();
    const Culture* culture = &m_evaluator.ReportCulture();
    if (plan.language.isSet) {
        const std::string language = Text(plan.language);
        if (!language.empty() && language != "Default") {
            culture = &FindCulture(language);
            m_evaluator.SetCulture(*culture);
        }
    }
    Value value = plan.value.Get(m_evaluator);
    if (value.IsText()) {
        run.text.assign(value.AsText());
    } else if (plan.formatValue.isSet) {
        const bool isConstant = plan.formatValue.IsConstant();
        const std::string format = isConstant ? std::string() : Text(plan.formatValue);
        run.text = FormatValue(value, isConstant ? plan.format : format, *culture);
        if (isOnlyRun) {
            out.format = isConstant ? plan.format : format;
        }
    } else {
        run.text = ToText(value, *culture);
    }
    run.style = plan.style.Get(m_evaluator);
    run.hyperlink.clear();
    if (plan.hyperlink.isSet) {
        run.hyperlink = Text(plan.hyperlink);
        if (!IsHarmlessLink(run.hyperlink)) {
            run.hyperlink.clear();
        }
    }
    if (isOnlyRun) {
        out.isNumeric = IsAlignedRight(value);
        out.language = culture->name;
        out.value = std::move(value);
    }
    m_evaluator.SetCulture(outer);
}

void ItemBuilder::ImageOf(ItemPlan& plan, Instance& out) {
    const auto& image = static_cast<const Image&>(*plan.definition);
    out.sizing = static_cast<Instance::Sizing>(image.sizing);
    out.mimeType = Text(plan.mimeType);
    out.imageBytes = m_images.Load(image.source, plan.value.Get(m_evaluator), image.name, out.mimeType);
}

void ItemBuilder::ChartOf(ItemPlan& plan, Instance& out) {
    const ChartData data = EvaluateChart(*plan.chart, *this);
    if (m_input.drawings == Drawings::Data) {
        ShowData(DataOf(data), out);
        return;
    }
    Show(DrawChart(data, out.width, out.height), Repeats::Never, out);
}

void ItemBuilder::GaugeOf(ItemPlan& plan, Instance& out) {
    Show(DrawGaugePanel(*plan.gauge, *this, out.width, out.height), Repeats::Maybe, out);
}

void ItemBuilder::BarcodeOf(ItemPlan& plan, Instance& out) {
    const BarcodePlan& barcode = *plan.barcode;
    BarcodeData data;
    data.symbology = Text(barcode.symbology);
    data.isError = plan.value.Get(m_evaluator).IsError();
    data.value = Text(plan.value);
    data.showsText = !barcode.showText.isSet || IsTrue(barcode.showText);
    data.errorCorrection = Text(barcode.errorCorrection);
    data.textStyle = *plan.messageStyle.Get(m_evaluator);
    const BoxStyle& box = *out.box;
    data.area = {static_cast<double>(box.paddingLeft), static_cast<double>(box.paddingTop),
                 out.width - static_cast<double>(box.paddingLeft + box.paddingRight),
                 out.height - static_cast<double>(box.paddingTop + box.paddingBottom)};
    Show(DrawBarcode(data, out.width, out.height), Repeats::Maybe, out);
}

void ItemBuilder::MapOf(ItemPlan& plan, Instance& out) {
    const MapData data = EvaluateMap(*plan.map, *this, out.width, out.height);
    if (m_input.drawings == Drawings::Data) {
        ShowData(DataOf(data), out);
        return;
    }
    Show(DrawMap(data, out.width, out.height), Repeats::Never, out);
}

void ItemBuilder::ShowData(DrawingData data, Instance& out) {
    auto drawing = std::make_shared<DrawingInstance>();
    drawing->data = std::move(data);
    out.kind = InstanceKind::Drawing;
    out.drawing = std::move(drawing);
}

void ItemBuilder::Show(const std::shared_ptr<DrawingInstance>& drawing, Repeats repeats, Instance& out) {
    m_evaluator.CheckBounds();  // a report may have a drawing in each of its many items
    drawing->background = out.box->background;
    if (m_input.drawings != Drawings::Pictures) {
        out.kind = InstanceKind::Drawing;
        out.drawing = drawing;
        return;
    }
    out.kind = InstanceKind::Image;
    out.sizing = Instance::Sizing::Fit;
    out.imageBytes =
        repeats == Repeats::Maybe ? m_pictures.Of(*drawing, m_input.paint) : m_input.paint(*drawing);
    out.mimeType = "image/png";
    if (out.toolTip.empty()) {
        out.toolTip = drawing->description;
    }
}

void ItemBuilder::SubreportOf(ItemPlan& plan, Instance& out) {
    const auto& subreport = static_cast<const Subreport&>(*plan.definition);
    std::vector<Value> parameters;
    for (const auto& [name, value] : plan.parameters) {
        parameters.push_back(value.Get(m_evaluator));
    }
    const auto report = m_input.openSubreport ? m_input.openSubreport(subreport, parameters) : nullptr;
    if (!report) {
        throw Error("Subreport \"" + subreport.name + "\" cannot be opened");
    }
    out.keepTogether = subreport.keepTogether;
    out.omitBorder = subreport.omitBorderOnPageBreak;
    out.consumeSpace = m_input.definition->consumeContainerWhitespace;
    const std::string message = report->hasRows ? std::string() : Text(plan.noRows);
    if (!message.empty()) {
        Instance& text = out.children.emplace_back();
        text.width = out.width;
        text.height = out.height;
        text.canGrow = true;
        text.paragraphs.resize(1);
        text.paragraphs.front().runs.push_back({message, plan.messageStyle.Get(m_evaluator), {}});
        return;
    }
    double below = 0;
    for (const auto& section : report->sections) {
        for (const Instance& item : section->items) {
            Instance& child = out.children.emplace_back(item);
            child.y += below;
            KeepAlive(child, report);
        }
        below += section->bodyHeight;
        out.width = std::max(out.width, section->bodyWidth);
    }
    out.height = std::max(out.height, below);
}

}  // namespace rdl::layout
