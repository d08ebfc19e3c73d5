// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/new_graphics.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/chart_parts.h"
#include "designer/graphics/gauge_parts.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/fields.h"
#include "platform/base/ascii.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr std::string_view SampleCode = "123456";

// What the kind is called in a message.
std::string_view WordOf(NewGraphic kind) {
    switch (kind) {
        case NewGraphic::Chart:
            return "chart";
        case NewGraphic::Gauge:
            return "gauge";
        case NewGraphic::Indicator:
            return "indicator";
        case NewGraphic::BarCode:
            return "bar code";
        case NewGraphic::Subreport:
            return "subreport";
    }
    return {};
}

std::optional<ReportSet> FindSet(const Document& document, const std::string& name) {
    for (ReportSet& set : SetsOf(document)) {
        if (name.empty() || SameAscii(set.name, name)) {
            return std::move(set);
        }
    }
    return std::nullopt;
}

ReportSet SetFor(const Document& document, NewGraphic kind, const std::string& name) {
    auto set = FindSet(document, name);
    if (!set) {
        throw EditError("The report has no data set that " +
                        std::string(kind == NewGraphic::Indicator ? "an " : "a ") +
                        std::string(WordOf(kind)) + " could show");
    }
    return *std::move(set);
}

const ReportField* FirstNumber(const ReportSet& set) {
    const auto found = std::find_if(set.fields.begin(), set.fields.end(),
                                    [](const ReportField& field) { return field.IsNumeric(); });
    return found == set.fields.end() ? nullptr : &*found;
}

const ReportField* FirstOtherField(const ReportSet& set) {
    const auto found = std::find_if(set.fields.begin(), set.fields.end(),
                                    [](const ReportField& field) { return !field.IsNumeric(); });
    return found == set.fields.end() ? nullptr : &*found;
}

// The value of a gauge on its scale. Without a number it is the number of rows.
struct Measure {
    std::string value = "=CountRows()", most = "=CountRows()";
};

Measure MeasureOf(const ReportSet& set) {
    const ReportField* field = FirstNumber(set);
    if (!field) {
        return {};
    }
    const std::string value = "(Fields!" + field->name + ".Value)";
    return {"=Avg" + value, "=Max" + value};
}

std::string GaugeXml(const ReportSet& set, GaugeKind kind, const char* name) {
    const Measure measure = MeasureOf(set);
    return NewGaugesXml({NoElement, kind, name, measure.value, "0", measure.most});
}

std::string CodeProperty(std::string_view name, std::string_view value) {
    return "<CustomProperty>" + LeafOf("Name", name) + LeafOf("Value", value) + "</CustomProperty>";
}

// Outside of data regions a field is that of the first row.
std::string BarCodeXml(const Document& document, const std::string& dataSet) {
    const auto set = FindSet(document, dataSet);
    const std::string value = !set || set->fields.empty() ? std::string(SampleCode)
                                                          : "=First(Fields!" + set->fields.front().name +
                                                                ".Value, \"" + set->name + "\")";
    return "<Type>Barcode</Type><CustomProperties>" + CodeProperty("Symbology", "Code128") +
           CodeProperty("Value", value) + CodeProperty("ShowText", "true") + "</CustomProperties>";
}

void CheckPlace(const Document& document, const ReportBand& band, NewGraphic kind) {
    const std::string word(WordOf(kind));
    const bool isGauge = kind == NewGraphic::Gauge || kind == NewGraphic::Indicator;
    if (band.kind != BandKind::Body && kind != NewGraphic::BarCode) {
        throw EditError("A page header or footer cannot hold " +
                        std::string(kind == NewGraphic::Indicator ? "an " : "a ") + word);
    }
    if (IsOlderSchema(document) && isGauge) {
        throw EditError("A new " + word + " needs a report of the schema 2008 or later");
    }
}

// A chart of the first number by the first other field of the data set.
ChartDesign NewChartDesign(const Document& document, const ChartType& type, const std::string& dataSet) {
    const auto set = FindSet(document, dataSet);
    ChartDesign design;
    design.type = type.type;
    design.subtype = type.subtype;
    const ReportField* number = set ? FirstNumber(*set) : nullptr;
    const ReportField* category = set ? FirstOtherField(*set) : nullptr;
    category = category || !set || set->fields.empty() ? category : &set->fields.front();
    ChartValue value;
    value.label = number ? CaptionOf(number->name) : "Rows";
    for (const std::string& name : ValueNamesOf(&type)) {
        const std::string_view aggregate = name == "High"                       ? "Max"
                                           : name == "Low"                      ? "Min"
                                           : name == "Start"                    ? "First"
                                           : name == "End"                      ? "Last"
                                           : name == "Median" || name == "Mean" ? "Avg"
                                                                                : "Sum";
        value.values[name] =
            !number ? "=CountRows()" : "=" + std::string(aggregate) + "(Fields!" + number->name + ".Value)";
    }
    design.values.push_back(value);
    if (category) {
        design.categories.push_back({NoElement, FieldValue(category->name)});
        design.title = value.label + " by " + CaptionOf(category->name);
    }
    design.legend = type.hasAxes ? "" : "RightCenter";
    design.showsLabels = !type.hasAxes;
    return design;
}

std::string_view ElementOf(NewGraphic kind) {
    return kind == NewGraphic::Chart       ? "Chart"
           : kind == NewGraphic::BarCode   ? "CustomReportItem"
           : kind == NewGraphic::Subreport ? "Subreport"
                                           : "GaugePanel";
}

// Axes are shown only if they say so. The values are written by the design.
std::string OlderChartContent(const ChartType& type) {
    if (type.olderType.empty()) {
        throw EditError("A chart of 2003 or 2005 cannot have this type");
    }
    const std::string grid =
        "<MajorGridLines><ShowGridLines>true</ShowGridLines><Style><BorderColor><Default>#dddddd</Default>"
        "</BorderColor></Style></MajorGridLines>";
    return LeafOf("Type", type.olderType) + LeafOf("Subtype", type.olderSubtype) +
           "<CategoryAxis><Axis><Visible>true</Visible></Axis></CategoryAxis><ValueAxis><Axis>" + grid +
           "<Visible>true</Visible></Axis></ValueAxis>";
}

std::string ContentOf(const Document& document, NewGraphic kind, const GraphicChoice& choice) {
    const auto shows = [](const ReportSet& set) { return LeafOf("DataSetName", set.name); };
    switch (kind) {
        case NewGraphic::Chart: {
            const ReportSet set = SetFor(document, kind, choice.dataSet);
            const ChartType& type = choice.chart ? *choice.chart : ChartTypes().front();
            return IsOlderSchema(document) ? OlderChartContent(type) + shows(set)
                                           : ChartContent(document, type, set.name) + shows(set);
        }
        case NewGraphic::Gauge: {
            const ReportSet set = SetFor(document, kind, choice.dataSet);
            return GaugeXml(set, GaugeKind::Dial, "RadialGauge1") + shows(set);
        }
        case NewGraphic::Indicator: {
            const ReportSet set = SetFor(document, kind, choice.dataSet);
            return GaugeXml(set, GaugeKind::Indicator, "StateIndicator1") + shows(set);
        }
        case NewGraphic::BarCode:
            return BarCodeXml(document, choice.dataSet);
        case NewGraphic::Subreport:
            return LeafOf("ReportName", choice.report);
    }
    return {};
}

std::string NameOf(NewGraphic kind) {
    return kind == NewGraphic::Chart       ? "Chart1"
           : kind == NewGraphic::Gauge     ? "Gauge1"
           : kind == NewGraphic::Indicator ? "Indicator1"
           : kind == NewGraphic::BarCode   ? "Barcode1"
                                           : "Subreport1";
}

}  // namespace

ElementId InsertGraphic(Document& document, const ReportBand& band, const Rect& place, NewGraphic kind,
                        const GraphicChoice& choice) {
    CheckPlace(document, band, kind);
    const std::string element(ElementOf(kind));
    const auto size = [&](std::string_view name, double points) {
        return LeafOf(name, SizeOfReport(document, points));
    };
    const std::string places = size("Top", place.top) + size("Left", place.left) +
                               size("Height", place.height) + size("Width", place.width);
    const std::string content = ContentOf(document, kind, choice);
    // The schemas have the properties of a CustomReportItem after its place.
    const std::size_t split =
        kind == NewGraphic::BarCode ? content.find("<CustomProperties>") : content.size();
    const std::string xml = "<" + element + " Name=\"" + UniqueName(document, NameOf(kind)) + "\">" +
                            content.substr(0, split) + places + content.substr(split) + "<Style /></" +
                            element + ">";
    const ElementId made = InsertXml(document, EnsureChild(document, band.element, "ReportItems"), xml);
    if (kind == NewGraphic::Chart && IsOlderSchema(document)) {
        ChartDesign design = NewChartDesign(document, choice.chart ? *choice.chart : ChartTypes().front(),
                                            TrimmedTextAt(document, made, "DataSetName"));
        design.dataSet = TrimmedTextAt(document, made, "DataSetName");
        PutChartDesign(document, made, design);
    }
    return made;
}

std::string ChartContent(const Document& document, const ChartType& type, const std::string& dataSet) {
    return NewChartContent(document, NewChartDesign(document, type, dataSet));
}

}  // namespace designer
