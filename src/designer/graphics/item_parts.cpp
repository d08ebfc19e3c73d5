// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/item_parts.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr std::size_t MostParameters = 1000;  // that are offered

// The property of a bar code with this name, which may have that of a designer before it: the CustomProperty,
// or the child of a BarCode.
ElementId PropertyOf(const Document& document, ElementId item, std::string_view wanted) {
    if (document.Name(item) != "CustomReportItem") {
        return document.Find(item, wanted);
    }
    for (const ElementId id : ChildrenNamed(document, item, "CustomProperties", "CustomProperty")) {
        const std::string name = TrimmedTextAt(document, id, "Name");
        const std::size_t mark = name.find_last_of(":.");
        if (SameAscii(mark == std::string::npos ? name : name.substr(mark + 1), wanted)) {
            return id;
        }
    }
    return NoElement;
}

std::string ValueOf(const Document& document, ElementId item, std::string_view name) {
    const ElementId property = PropertyOf(document, item, name);
    const bool isCustom = document.Name(item) == "CustomReportItem";
    return property == NoElement ? std::string() : TrimmedTextAt(document, property, isCustom ? "Value" : "");
}

void Put(Document& document, ElementId item, std::string_view name, const std::string& text) {
    if (ValueOf(document, item, name) == text) {
        return;
    }
    const ElementId property = PropertyOf(document, item, name);
    if (text.empty()) {
        Remove(document, property);
    } else if (document.Name(item) != "CustomReportItem") {
        SetText(document, item, name, text);
    } else if (property != NoElement) {
        SetText(document, property, "Value", text);
    } else {
        InsertXml(document, EnsureChild(document, item, "CustomProperties"),
                  "<CustomProperty><Name>" + std::string(name) + "</Name><Value>" + EscapedText(text, "\n") +
                      "</Value></CustomProperty>");
    }
}

}  // namespace

SubreportDesign ReadSubreportDesign(const Document& document, ElementId subreport) {
    SubreportDesign design{TrimmedTextAt(document, subreport, "ReportName"), {}};
    for (const ElementId id : ChildrenNamed(document, subreport, "Parameters", "Parameter")) {
        design.parameters.push_back({static_cast<int>(design.parameters.size()),
                                     document.Attribute(id, "Name").value_or(""),
                                     TrimmedTextAt(document, id, "Value")});
    }
    return design;
}

void PutSubreportDesign(Document& document, ElementId subreport, const SubreportDesign& design) {
    const SubreportDesign now = ReadSubreportDesign(document, subreport);
    const StepGroup group(document, "Change subreport");
    if (now.report != design.report) {
        SetText(document, subreport, "ReportName", design.report);
    }
    const std::vector<ElementId> old = ChildrenNamed(document, subreport, "Parameters", "Parameter");
    for (std::size_t number = 0; number < old.size(); ++number) {
        const auto kept = std::find_if(
            design.parameters.begin(), design.parameters.end(),
            [number](const SubreportParameter& one) { return one.old == static_cast<int>(number); });
        if (kept == design.parameters.end()) {
            Remove(document, old[number]);
            continue;
        }
        if (kept->name != now.parameters[number].name) {
            SetAttribute(document, old[number], "Name", kept->name);
        }
        if (kept->value != now.parameters[number].value) {
            SetText(document, old[number], "Value", kept->value);
        }
    }
    for (const SubreportParameter& one : design.parameters) {
        if (one.old < 0) {
            InsertXml(document, EnsureChild(document, subreport, "Parameters"),
                      "<Parameter Name=\"" + EscapedValue(one.name, '"') + "\"><Value>" +
                          EscapedText(one.value, "\n") + "</Value></Parameter>");
        }
    }
}

std::vector<std::string> ParametersOfReport(std::string_view bytes) {
    std::vector<std::string> names;
    const Document report(bytes);
    for (const ElementId id : ChildrenNamed(report, report.Root(), "ReportParameters", "ReportParameter")) {
        const std::string name = report.Attribute(id, "Name").value_or("");
        if (!name.empty() && names.size() < MostParameters) {
            names.push_back(name);
        }
    }
    return names;
}

bool HasBarcodeDesign(const Document& document, ElementId item) {
    const std::string kind = document.Name(item);
    return (kind == "CustomReportItem" || kind == "BarCode") &&
           PropertyOf(document, item, "Value") != NoElement;
}

BarcodeDesign ReadBarcodeDesign(const Document& document, ElementId item) {
    return {ValueOf(document, item, "Symbology"), ValueOf(document, item, "Value"),
            ValueOf(document, item, "ShowText"), ValueOf(document, item, "ErrorCorrection")};
}

void PutBarcodeDesign(Document& document, ElementId item, const BarcodeDesign& design) {
    const StepGroup group(document, "Change bar code");
    Put(document, item, "Symbology", design.symbology);
    Put(document, item, "Value", design.value);
    Put(document, item, "ShowText", design.showsText);
    Put(document, item, "ErrorCorrection", design.correction);
}

ElementId BarcodeValueOf(const Document& document, ElementId item) {
    return document.Name(item) == "CustomReportItem" ? PropertyOf(document, item, "Value") : item;
}

}  // namespace designer
