// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_parts.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/chart_types.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr std::string_view Categories = "ChartCategoryHierarchy", Series = "ChartSeriesHierarchy";
constexpr std::string_view Members = "ChartMembers", Collection = "ChartData/ChartSeriesCollection";
constexpr std::string_view Point = "ChartDataPoints/ChartDataPoint";
constexpr std::string_view Label = "ChartDataPoints/ChartDataPoint/ChartDataLabel";
constexpr std::string_view Area = "ChartAreas/ChartArea";
constexpr std::string_view CategoryAxes = "ChartCategoryAxes", ValueAxes = "ChartValueAxes";
constexpr std::size_t MostLevels = 50;

std::string Around(std::string_view name, const std::string& content) {
    return "<" + std::string(name) + ">" + content + "</" + std::string(name) + ">";
}

bool IsTrue(const Document& document, ElementId id, const std::string& path) {
    return SameAscii(TrimmedTextAt(document, id, path), "true");
}

std::vector<ElementId> MembersOf(const Document& document, ElementId owner) {
    return ChildrenNamed(document, owner, Members, "ChartMember");
}

// --- Reading ---

// Reads groups that are within each other, and returns the innermost of them, or the hierarchy.
ElementId ReadGroups(const Document& document, ElementId hierarchy, std::vector<ChartGroup>& groups) {
    ElementId owner = hierarchy;
    while (owner != NoElement && groups.size() < MostLevels) {
        const std::vector<ElementId> members = MembersOf(document, owner);
        const bool isGroup =
            members.size() == 1 &&
            ChildrenNamed(document, members.front(), "Group/GroupExpressions", "GroupExpression").size() == 1;
        if (!isGroup) {
            break;
        }
        owner = members.front();
        groups.push_back({owner, TrimmedTextAt(document, owner, "Group/GroupExpressions/GroupExpression")});
    }
    return owner;
}

bool IsStatic(const Document& document, ElementId member) {
    return document.Find(member, "Group") == NoElement && MembersOf(document, member).empty();
}

// The static members of the values; none if the one value has none of its own.
std::vector<ElementId> LabelMembers(const Document& document, ElementId chart) {
    std::vector<ChartGroup> groups;
    const ElementId inner = ReadGroups(document, document.Find(chart, Series), groups);
    return inner == NoElement ? std::vector<ElementId>{} : MembersOf(document, inner);
}

void ReadValues(const Document& document, ElementId chart, ChartDesign& design) {
    const std::vector<ElementId> labels = LabelMembers(document, chart);
    const std::vector<ElementId> all = ChildrenNamed(document, chart, Collection, "ChartSeries");
    for (std::size_t index = 0; index < all.size(); ++index) {
        ChartValue& value = design.values.emplace_back();
        value.series = all[index];
        value.label = index < labels.size() ? TrimmedTextAt(document, labels[index], "Label") : std::string();
        const ElementId point = document.Find(all[index], std::string(Point) + "/ChartDataPointValues");
        for (const ElementId child :
             point == NoElement ? std::vector<ElementId>{} : document.Children(point)) {
            value.values[document.Name(child)] = TrimmedTextAt(document, child, "");
        }
    }
    const bool hasLabels =
        std::all_of(labels.begin(), labels.end(), [&](ElementId id) { return IsStatic(document, id); });
    design.hasOtherGroups =
        !hasLabels || (labels.size() != all.size() && !(labels.empty() && all.size() == 1));
}

std::string AxisPath(std::string_view axes) {
    return std::string(Area) + "/" + std::string(axes) + "/ChartAxis";
}

bool ShowsLabels(const Document& document, ElementId series) {
    return IsTrue(document, series, std::string(Label) + "/Visible") ||
           IsTrue(document, series, "ChartDataLabel/Visible");
}

// --- Writing ---

std::string GroupMember(const std::string& expression, NewNames& names, const std::string& inner) {
    const std::string field = FieldOfValue(expression);
    return Around("ChartMember",
                  "<Group Name=\"" + names.Take((field.empty() ? "Chart" : field) + "Group") + "\">" +
                      Around("GroupExpressions", LeafOf("GroupExpression", expression)) + "</Group>" +
                      Around("SortExpressions", Around("SortExpression", LeafOf("Value", expression))) +
                      inner + LeafOf("Label", expression));
}

// The member as it is, with other members within it.
std::string KeptMember(const Document& document, ElementId member, const std::string& inner) {
    std::string before, after;
    for (const ElementId child : document.Children(member)) {
        const std::string name = document.Name(child);
        if (name != Members) {
            (name == "Group" || name == "SortExpressions" ? before : after) += XmlOf(document, child);
        }
    }
    return Around("ChartMember", before + inner + after);
}

// Returns the members of a hierarchy, from the innermost group outwards.
std::string MembersXml(const Document& document, const std::vector<ChartGroup>& groups, std::string inner,
                       NewNames& names) {
    for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
        const bool stays = group->member != NoElement &&
                           TrimmedTextAt(document, group->member, "Group/GroupExpressions/GroupExpression") ==
                               group->expression;
        inner = Around(Members, stays ? KeptMember(document, group->member, inner)
                                      : GroupMember(group->expression, names, inner));
    }
    return inner.empty() ? Around(Members, "<ChartMember />") : inner;
}

std::string LabelsXml(const Document& document, const ChartDesign& now, const std::vector<ElementId>& kept,
                      const ChartDesign& design) {
    std::string members;
    for (const ChartValue& value : design.values) {
        ElementId member = NoElement;
        for (std::size_t index = 0; index < now.values.size() && index < kept.size(); ++index) {
            const bool isSame = value.series != NoElement && now.values[index].series == value.series &&
                                now.values[index].label == value.label;
            member = isSame ? kept[index] : member;
        }
        members += member != NoElement ? XmlOf(document, member)
                                       : Around("ChartMember", LeafOf("Label", value.label));
    }
    return Around(Members, members);
}

std::string SeriesXml(const ChartDesign& design, const ChartValue& value, const std::string& name) {
    std::string values;
    for (const std::string& one : ValueNamesOf(FindChartType(design.type, design.subtype))) {
        const auto found = value.values.find(one);
        values += found == value.values.end() ? std::string() : LeafOf(one, found->second);
    }
    const bool isPart = SameAscii(design.type, "Shape");
    const std::string label =
        !design.showsLabels ? std::string()
                            : Around("ChartDataLabel", "<Style />" +
                                                           (isPart ? LeafOf("Label", "#PERCENT{P0}")
                                                                   : LeafOf("UseValueAsLabel", "true")) +
                                                           LeafOf("Visible", "true"));
    const bool hasMarkers = SameAscii(design.type, "Line");
    return "<ChartSeries Name=\"" + EscapedValue(name, '"') + "\">" +
           Around("ChartDataPoints",
                  Around("ChartDataPoint", Around("ChartDataPointValues", values) + label +
                                               (hasMarkers ? Around("ChartMarker", LeafOf("Type", "Circle"))
                                                           : std::string()))) +
           LeafOf("Type", design.type) + LeafOf("Subtype", design.subtype) + "<Style /></ChartSeries>";
}

// Series names need not differ from those of items.
std::string SeriesName(const Document& document, ElementId chart, std::size_t number) {
    std::vector<std::string> taken;
    if (chart != NoElement) {
        for (const ElementId id : ChildrenNamed(document, chart, Collection, "ChartSeries")) {
            taken.push_back(document.Attribute(id, "Name").value_or(""));
        }
    }
    std::string name;
    do {
        name = "Series" + std::to_string(number++);
    } while (std::find(taken.begin(), taken.end(), name) != taken.end());
    return name;
}

constexpr std::string_view GridXml =
    "<ChartMajorGridLines><Enabled>True</Enabled><Style><Border><Color>#dddddd</Color><Style>Solid</Style>"
    "</Border></Style></ChartMajorGridLines>";

std::string AxisXml(bool isValue, const ChartDesign& design) {
    const std::string& title = isValue ? design.valueTitle : design.categoryTitle;
    return "<ChartAxis Name=\"Primary\"><Style><FontSize>8pt</FontSize>" +
           (isValue ? LeafOf("Format", "N0") : std::string()) + "</Style>" +
           (title.empty() ? std::string()
                          : Around("ChartAxisTitle",
                                   LeafOf("Caption", title) + "<Style><FontSize>8pt</FontSize></Style>")) +
           (isValue ? std::string(GridXml) : std::string()) +
           // The first bar is at the top.
           (!isValue && SameAscii(design.type, "Bar") ? LeafOf("Reverse", "true") : std::string()) +
           "</ChartAxis>";
}

std::string AreasXml(const ChartDesign& design) {
    return "<ChartAreas><ChartArea Name=\"Default\"><ChartCategoryAxes>" + AxisXml(false, design) +
           "</ChartCategoryAxes><ChartValueAxes>" + AxisXml(true, design) +
           "</ChartValueAxes><Style /></ChartArea></ChartAreas>";
}

std::string LegendXml(const std::string& position) {
    return "<ChartLegend Name=\"Default\"><Style><FontSize>8pt</FontSize></Style>" +
           LeafOf("Position", position) + "</ChartLegend>";
}

std::string TitleXml(const std::string& caption) {
    return "<ChartTitle Name=\"Default\">" + LeafOf("Caption", caption) +
           "<Style><FontSize>11pt</FontSize><FontWeight>Bold</FontWeight></Style></ChartTitle>";
}

class ChartChange {
 public:
    ChartChange(Document& document, ElementId chart, ChartDesign design)
        : m_document(document),
          m_chart(chart),
          m_now(ReadChartDesign(document, chart)),
          m_design(std::move(design)) {}

    void Make() {
        const bool isOtherType = m_now.type != m_design.type || m_now.subtype != m_design.subtype;
        Complete(isOtherType);
        if (!m_design.hasOtherGroups) {
            PutGroups();
        }
        PutSeries(isOtherType);
        PutText("DataSetName", m_now.dataSet, m_design.dataSet);
        PutText("Palette", m_now.palette, m_design.palette);
        PutTitles();
        PutLegend();
        PutLabels();
    }

 private:
    // A type that has other values shows those that there are.
    void Complete(bool isOtherType) {
        for (ChartValue& value : m_design.values) {
            if (!isOtherType && value.series != NoElement) {
                continue;
            }
            const auto any = std::find_if(value.values.begin(), value.values.end(),
                                          [](const auto& one) { return !one.second.empty(); });
            const auto own = value.values.find("Y");
            const std::string text = own != value.values.end() && !own->second.empty() ? own->second
                                     : any != value.values.end()                       ? any->second
                                                                                       : std::string();
            for (const std::string& name : ValueNamesOf(FindChartType(m_design.type, m_design.subtype))) {
                if (value.values[name].empty()) {
                    value.values[name] = text;
                }
            }
        }
    }

    void PutText(std::string_view path, const std::string& old, const std::string& text) {
        if (old != text) {
            text.empty() ? RemoveAt(m_document, m_chart, path) : SetText(m_document, m_chart, path, text);
        }
    }

    void Replace(std::string_view hierarchy, const std::string& members) {
        const ElementId old = m_document.Find(m_chart, hierarchy);
        const std::string xml = Around(hierarchy, members);
        if (old == NoElement) {
            InsertXml(m_document, m_chart, xml);
            return;
        }
        InsertXml(m_document, m_chart, xml, old);
        Remove(m_document, old);
    }

    void PutGroups() {
        NewNames names(m_document);
        if (m_now.categories != m_design.categories) {
            Replace(Categories, MembersXml(m_document, m_design.categories, {}, names));
        }
        const auto labels = [](const ChartDesign& design) {
            std::vector<std::pair<ElementId, std::string>> all;
            for (const ChartValue& value : design.values) {
                all.emplace_back(value.series, value.label);
            }
            return all;
        };
        if (m_now.series != m_design.series || labels(m_now) != labels(m_design)) {
            const std::vector<ElementId> kept = LabelMembers(m_document, m_chart);
            const std::string inner = LabelsXml(m_document, m_now, kept, m_design);
            Replace(Series, MembersXml(m_document, m_design.series, inner, names));
        }
    }

    void PutSeries(bool isOtherType) {
        for (const ChartValue& old : m_now.values) {
            const bool stays =
                std::any_of(m_design.values.begin(), m_design.values.end(),
                            [&](const ChartValue& value) { return value.series == old.series; });
            if (!stays) {
                Remove(m_document, old.series);
            }
        }
        EnsureChild(m_document, EnsureChild(m_document, m_chart, "ChartData"), "ChartSeriesCollection");
        for (std::size_t index = 0; index < m_design.values.size(); ++index) {
            ChartValue& value = m_design.values[index];
            if (value.series == NoElement) {
                value.series =
                    InsertXml(m_document, m_document.Find(m_chart, Collection),
                              SeriesXml(m_design, value, SeriesName(m_document, m_chart, index + 1)));
            } else if (isOtherType) {
                SetText(m_document, value.series, "Type", m_design.type);
                SetText(m_document, value.series, "Subtype", m_design.subtype);
            }
            for (const auto& [name, text] : value.values) {
                PutValue(value.series, name, text);
            }
        }
        PutOrder();
    }

    void PutValue(ElementId series, const std::string& name, const std::string& text) {
        const std::string path = std::string(Point) + "/ChartDataPointValues/" + name;
        if (TrimmedTextAt(m_document, series, path) != text) {
            SetText(m_document, series, path, text);
        }
    }

    void PutOrder() {
        const ElementId collection = m_document.Find(m_chart, Collection);
        for (std::size_t index = 0; index < m_design.values.size(); ++index) {
            const ElementId there = ChildrenNamed(m_document, m_chart, Collection, "ChartSeries")[index];
            if (there != m_design.values[index].series) {
                Move(m_document, m_design.values[index].series, collection, there);
            }
        }
    }

    void PutTitles() {
        if (m_now.title != m_design.title) {
            const ElementId title = m_document.Find(m_chart, "ChartTitles/ChartTitle");
            if (m_design.title.empty()) {
                RemoveAt(m_document, m_chart, "ChartTitles/ChartTitle");
            } else if (title != NoElement) {
                SetText(m_document, title, "Caption", m_design.title);
            } else {
                InsertXml(m_document, EnsureChild(m_document, m_chart, "ChartTitles"),
                          TitleXml(m_design.title));
            }
        }
        if (m_document.Find(m_chart, Area) == NoElement &&
            (!m_design.categoryTitle.empty() || !m_design.valueTitle.empty())) {
            RemoveAt(m_document, m_chart, "ChartAreas");
            InsertXml(m_document, m_chart, AreasXml(m_design));
            return;
        }
        PutAxisTitle(CategoryAxes, false, m_now.categoryTitle, m_design.categoryTitle);
        PutAxisTitle(ValueAxes, true, m_now.valueTitle, m_design.valueTitle);
    }

    void PutAxisTitle(std::string_view axes, bool isValue, const std::string& old, const std::string& title) {
        if (old == title) {
            return;
        }
        const ElementId axis = m_document.Find(m_chart, AxisPath(axes));
        if (axis == NoElement) {
            const ElementId area = m_document.Find(m_chart, Area);
            InsertXml(m_document, EnsureChild(m_document, area, axes), AxisXml(isValue, m_design));
        } else if (title.empty()) {
            RemoveAt(m_document, axis, "ChartAxisTitle");
        } else {
            SetText(m_document, axis, "ChartAxisTitle/Caption", title);
        }
    }

    // A legend that is hidden keeps its look.
    void PutLegend() {
        if (m_now.legend == m_design.legend) {
            return;
        }
        const ElementId legend = m_document.Find(m_chart, "ChartLegends/ChartLegend");
        if (m_design.legend.empty()) {
            SetText(m_document, legend, "Hidden", "true");
        } else if (legend == NoElement) {
            InsertXml(m_document, EnsureChild(m_document, m_chart, "ChartLegends"),
                      LegendXml(m_design.legend));
        } else {
            RemoveAt(m_document, legend, "Hidden");
            SetText(m_document, legend, "Position", m_design.legend);
        }
    }

    void PutLabels() {
        if (m_now.showsLabels == m_design.showsLabels) {
            return;
        }
        for (const ChartValue& value : m_design.values) {
            const bool isOfSeries = m_document.Find(value.series, Label) == NoElement &&
                                    m_document.Find(value.series, "ChartDataLabel") != NoElement;
            const std::string label = isOfSeries ? "ChartDataLabel" : std::string(Label);
            if (ShowsLabels(m_document, value.series) == m_design.showsLabels) {
                continue;
            }
            SetText(m_document, value.series, label + "/Visible", m_design.showsLabels ? "true" : "false");
            if (m_design.showsLabels && TrimmedTextAt(m_document, value.series, label + "/Label").empty()) {
                SetText(m_document, value.series, label + "/UseValueAsLabel", "true");
            }
        }
    }

    Document& m_document;
    const ElementId m_chart;
    const ChartDesign m_now;
    ChartDesign m_design;
};

}  // namespace

bool HasChartDesign(const Document& document, ElementId chart) {
    return document.Find(chart, Series) != NoElement || document.Find(chart, Categories) != NoElement ||
           document.Find(chart, "ChartAreas") != NoElement;
}

ChartDesign ReadChartDesign(const Document& document, ElementId chart) {
    ChartDesign design;
    ReadValues(document, chart, design);
    const ElementId categories = ReadGroups(document, document.Find(chart, Categories), design.categories);
    const std::vector<ElementId> rest =
        categories == NoElement ? std::vector<ElementId>{} : MembersOf(document, categories);
    const bool isPlain =
        rest.empty() || (rest.size() == 1 && design.categories.empty() && IsStatic(document, rest.front()));
    design.hasOtherGroups = design.hasOtherGroups || !isPlain;
    ReadGroups(document, document.Find(chart, Series), design.series);
    if (!design.values.empty()) {
        design.type = TrimmedTextAt(document, design.values.front().series, "Type");
        design.subtype = TrimmedTextAt(document, design.values.front().series, "Subtype");
    }
    const auto shows = [&](const ChartValue& value) { return ShowsLabels(document, value.series); };
    design.showsLabels =
        !design.values.empty() && std::all_of(design.values.begin(), design.values.end(), shows);
    design.dataSet = TrimmedTextAt(document, chart, "DataSetName");
    design.palette = TrimmedTextAt(document, chart, "Palette");
    design.title = TrimmedTextAt(document, chart, "ChartTitles/ChartTitle/Caption");
    design.categoryTitle = TrimmedTextAt(document, chart, AxisPath(CategoryAxes) + "/ChartAxisTitle/Caption");
    design.valueTitle = TrimmedTextAt(document, chart, AxisPath(ValueAxes) + "/ChartAxisTitle/Caption");
    const ElementId legend = document.Find(chart, "ChartLegends/ChartLegend");
    if (legend != NoElement && !IsTrue(document, legend, "Hidden")) {
        const std::string position = TrimmedTextAt(document, legend, "Position");
        design.legend = position.empty() ? "RightTop" : position;
    }
    return design;
}

void PutChartDesign(Document& document, ElementId chart, ChartDesign design) {
    const StepGroup group(document, "Change chart");
    ChartChange(document, chart, std::move(design)).Make();
}

std::string NewChartContent(const Document& document, const ChartDesign& design) {
    NewNames names(document);
    std::string labels, series;
    for (std::size_t index = 0; index < design.values.size(); ++index) {
        labels += Around("ChartMember", LeafOf("Label", design.values[index].label));
        series += SeriesXml(design, design.values[index], SeriesName(document, NoElement, index + 1));
    }
    return Around(Categories, MembersXml(document, design.categories, {}, names)) +
           Around(Series, MembersXml(document, design.series, Around(Members, labels), names)) +
           Around("ChartData", Around("ChartSeriesCollection", series)) + AreasXml(design) +
           (design.legend.empty() ? std::string() : Around("ChartLegends", LegendXml(design.legend))) +
           (design.title.empty() ? std::string() : Around("ChartTitles", TitleXml(design.title))) +
           LeafOf("Palette", design.palette.empty() ? "BrightPastel" : design.palette);
}

}  // namespace designer
