// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/part_tree.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "designer/document/placeholder_text.h"
#include "designer/document/properties/properties.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace designer {
namespace {

constexpr std::size_t MostParts = 1000, MostText = 40;

struct Title {
    std::string_view element, text;
};
constexpr Title Titles[] = {{"ChartSeries", "Series"},
                            {"ChartDataPoint", "Points"},
                            {"ChartDataLabel", "Labels"},
                            {"DataLabel", "Labels"},
                            {"ChartMarker", "Markers"},
                            {"Marker", "Markers"},
                            {"ChartTitle", "Title"},
                            {"Title", "Title"},
                            {"ChartNoDataMessage", "Text without rows"},
                            {"ChartAxisTitle", "Title of the axis"},
                            {"ChartLegendTitle", "Title of the legend"},
                            {"ChartLegend", "Legend"},
                            {"Legend", "Legend"},
                            {"ChartArea", "Area"},
                            {"ChartMajorGridLines", "Grid lines"},
                            {"ChartMinorGridLines", "Minor grid lines"},
                            {"ChartMajorTickMarks", "Tick marks"},
                            {"ChartMinorTickMarks", "Minor tick marks"},
                            {"RadialGauge", "Dial"},
                            {"LinearGauge", "Linear gauge"},
                            {"RadialScale", "Scale"},
                            {"LinearScale", "Scale"},
                            {"RadialPointer", "Pointer"},
                            {"LinearPointer", "Pointer"},
                            {"ScaleRange", "Range"},
                            {"ScaleLabels", "Labels"},
                            {"GaugeMajorTickMarks", "Tick marks"},
                            {"GaugeMinorTickMarks", "Minor tick marks"},
                            {"StateIndicator", "Indicator"},
                            {"NumericIndicator", "Number"},
                            {"IndicatorState", "State"},
                            {"NumericIndicatorRange", "Range"},
                            {"GaugeLabel", "Text"},
                            {"GaugeImage", "Picture"},
                            {"BackFrame", "Frame"},
                            {"FrameBackground", "Background of the frame"},
                            {"PointerCap", "Cap"},
                            {"CustomLabel", "Label"},
                            {"Paragraph", "Paragraph"},
                            {"TextRun", "Text"},
                            {"CustomProperty", "Attribute"}};

// Shown with what they belong to.
constexpr std::string_view Joined[] = {"Group", "Grouping", "SortExpression", "SortBy"};

bool IsGraphic(std::string_view element) {
    return element == "Chart" || element == "GaugePanel";
}

bool HasProperties(std::string_view element) {
    static const std::set<std::string_view> all = [] {
        const std::vector<std::string_view> names = ElementsWithProperties();
        return std::set<std::string_view>(names.begin(), names.end());
    }();
    return all.contains(element) &&
           std::find(std::begin(Joined), std::end(Joined), element) == std::end(Joined);
}

bool IsWithin(const Document& document, ElementId id, std::string_view element) {
    for (ElementId around = document.Parent(id); around != NoElement; around = document.Parent(around)) {
        const std::string name = document.Name(around);
        if (name == element || IsGraphic(name)) {
            return name == element;
        }
    }
    return false;
}

std::string TitleOf(const Document& document, ElementId id, const std::string& element) {
    if (element == "ChartMember" || element.starts_with("Dynamic") || element == "StaticMember") {
        const bool isCategory =
            IsWithin(document, id, "ChartCategoryHierarchy") || IsWithin(document, id, "CategoryGroupings");
        return isCategory ? "Category" : "Series group";
    }
    if (element == "ChartAxis" || element == "Axis") {
        const bool isCategory =
            IsWithin(document, id, "ChartCategoryAxes") || IsWithin(document, id, "CategoryAxis");
        return isCategory ? "Category axis" : "Value axis";
    }
    const auto title = std::find_if(std::begin(Titles), std::end(Titles),
                                    [&](const Title& one) { return one.element == element; });
    return title == std::end(Titles) ? element : std::string(title->text);
}

// What distinguishes parts of one kind: a text that they show, a value, or a name.
std::string MarkOf(const Document& document, ElementId id) {
    for (const char* path : {"Caption", "Group/GroupExpressions/GroupExpression", "Label", "Text", "Name",
                             "GaugeInputValue/Value", "StartValue/Value"}) {
        std::string text(Trim(document.TextAt(id, path).value_or("")));
        if (!text.empty()) {
            return text;
        }
    }
    const std::string name = document.Attribute(id, "Name").value_or("");
    return name == "Default" || name == "Primary" ? std::string() : name;
}

std::string TextOf(const Document& document, ElementId id) {
    const std::string element = document.Name(id);
    const std::string title = TitleOf(document, id, element);
    const std::string text = element == "TextRun"
                                 ? PlaceholderOf(Trim(document.TextAt(id, "Value").value_or("")))
                                 : MarkOf(document, id);
    const std::string mark = WithoutControls(CutText(text, MostText));
    return mark.empty() ? title : title + " " + mark;
}

void AddParts(const Document& document, ElementId element, ElementId container,
              std::vector<GraphicPart>& parts) {
    const SourceTree& tree = document.Tree();
    for (const ElementId child : document.Children(element)) {
        const bool isOfReport = tree.IsOfReport(document.IndexOf(child));
        if (parts.size() >= MostParts || !isOfReport || document.Name(child) == "Style") {
            continue;
        }
        const bool isPart = HasProperties(document.Name(child));
        if (isPart) {
            parts.push_back({child, container, TextOf(document, child)});
        }
        AddParts(document, child, isPart ? child : container, parts);
    }
}

bool IsPartOfText(std::string_view element) {
    return element == "Paragraph" || element == "TextRun";
}

// The only run of a text box has the properties of the box.
void AddTexts(const Document& document, ElementId box, std::vector<GraphicPart>& parts) {
    const auto paragraphs = ChildrenNamed(document, box, "Paragraphs", "Paragraph");
    const bool hasSeveral = paragraphs.size() > 1;
    for (const ElementId paragraph : paragraphs) {
        const auto runs = ChildrenNamed(document, paragraph, "TextRuns", "TextRun");
        if (hasSeveral && parts.size() < MostParts) {
            parts.push_back({paragraph, box, TextOf(document, paragraph)});
        }
        for (const ElementId run : runs) {
            if ((hasSeveral || runs.size() > 1) && parts.size() < MostParts) {
                parts.push_back({run, hasSeveral ? paragraph : box, TextOf(document, run)});
            }
        }
    }
}

}  // namespace

std::vector<GraphicPart> PartsOf(const Document& document, ElementId item) {
    std::vector<GraphicPart> parts;
    const std::string element = document.Name(item);
    if (IsGraphic(element)) {
        AddParts(document, item, item, parts);
    } else if (element == "Textbox") {
        AddTexts(document, item, parts);
    }
    return parts;
}

ElementId OwnerOfPart(const Document& document, ElementId id) {
    if (!document.Has(id) || !HasProperties(document.Name(id))) {
        return NoElement;
    }
    const bool isText = IsPartOfText(document.Name(id));
    for (ElementId around = document.Parent(id); around != NoElement; around = document.Parent(around)) {
        const std::string name = document.Name(around);
        if (isText ? name == "Textbox" : IsGraphic(name)) {
            return around;
        }
    }
    return NoElement;
}

std::vector<ChartGroupPart> ChartGroupsOf(const Document& document, ElementId chart) {
    std::vector<ChartGroupPart> groups;
    if (document.Name(chart) != "Chart") {
        return groups;
    }
    for (const GraphicPart& part : PartsOf(document, chart)) {
        const ElementId own = document.Find(part.id, "Group");
        const ElementId group = own != NoElement ? own : document.Find(part.id, "Grouping");
        if (group == NoElement) {
            continue;
        }
        ChartGroupPart& one = groups.emplace_back();
        one.member = part.id;
        one.name = document.Attribute(group, "Name").value_or("");
        one.expression = document.TextAt(group, "GroupExpressions/GroupExpression").value_or("");
        one.isCategory = TitleOf(document, part.id, document.Name(part.id)) == "Category";
        const auto outer = std::find_if(groups.begin(), groups.end() - 1, [&](const ChartGroupPart& other) {
            return other.member == part.container;
        });
        one.depth = outer == groups.end() - 1 ? 0 : outer->depth + 1;
    }
    return groups;
}

std::vector<std::string> PathsOfPart(const Document& document, ElementId part) {
    std::vector<std::string> paths{""};
    for (const char* path : {"Group", "Grouping", "SortExpressions/SortExpression", "Sorting/SortBy"}) {
        if (document.Find(part, path) != NoElement) {
            paths.push_back(path);
        }
    }
    return paths;
}

}  // namespace designer
