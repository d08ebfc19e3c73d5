// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/chart_parts.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/chart_elements.h"
#include "designer/graphics/older_charts.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr std::string_view Categories = "ChartCategoryHierarchy", Series = "ChartSeriesHierarchy";
constexpr std::string_view NewerElements[] = {Series, Categories, "ChartAreas"};
constexpr std::string_view Collection = "ChartData/ChartSeriesCollection";
constexpr std::string_view Point = "ChartDataPoints/ChartDataPoint";
constexpr std::string_view Label = "ChartDataPoints/ChartDataPoint/ChartDataLabel";
constexpr std::string_view Area = "ChartAreas/ChartArea";
constexpr std::string_view CategoryAxes = "ChartCategoryAxes", ValueAxes = "ChartValueAxes";

// --- Reading ---

std::map<std::string, std::string> PointValues(const Document& document, ElementId point) {
    std::map<std::string, std::string> values;
    const ElementId owner = point == NoElement ? NoElement : document.Find(point, "ChartDataPointValues");
    for (const ElementId child : owner == NoElement ? std::vector<ElementId>{} : document.Children(owner)) {
        values[document.Name(child)] = TrimmedTextAt(document, child, "");
    }
    return values;
}

std::string LabelOf(const Document& document, const std::vector<ElementId>& labels, std::size_t index) {
    return index < labels.size() ? TrimmedTextAt(document, labels[index], "Label") : std::string();
}

// Whether each leaf of the series groups has the same values, in their order.
bool AreAlike(const Document& document, const ChartTree& tree, std::size_t series) {
    const std::vector<ElementId>& first = tree.labels.front();
    const std::size_t count = std::max<std::size_t>(first.size(), 1);
    return (series == tree.leaves.size() * count || (series == 0 && first.empty())) &&
           std::all_of(tree.labels.begin(), tree.labels.end(), [&](const std::vector<ElementId>& labels) {
               bool isSame = labels.size() == first.size();
               for (std::size_t index = 0; isSame && index < first.size(); ++index) {
                   isSame = LabelOf(document, labels, index) == LabelOf(document, first, index);
               }
               return isSame;
           });
}

void ReadValues(const Document& document, ElementId chart, ChartDesign& design) {
    const ChartTree tree = ReadSeriesGroups(document, chart);
    const std::vector<ElementId> all = ChildrenNamed(document, chart, Collection, "ChartSeries");
    design.hasOtherGroups = !tree.isKnown || tree.labels.empty() || !AreAlike(document, tree, all.size());
    design.series = tree.groups;
    const std::vector<ElementId> labels =
        tree.labels.empty() ? std::vector<ElementId>{} : tree.labels.front();
    const std::size_t count =
        design.hasOtherGroups ? all.size() : std::min(all.size(), std::max<std::size_t>(labels.size(), 1));
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (count > 0 && index >= count) {
            design.values[index % count].copies.push_back(all[index]);
            continue;
        }
        ChartValue& value = design.values.emplace_back();
        value.series = all[index];
        value.label = LabelOf(document, labels, index);
        const std::vector<ElementId> points = ChartPointsOf(document, all[index]);
        value.values = PointValues(document, points.empty() ? NoElement : points.front());
    }
}

std::string AxisPath(std::string_view axes) {
    return std::string(Area) + "/" + std::string(axes) + "/ChartAxis";
}

bool ShowsLabels(const Document& document, ElementId series) {
    return FlagOf(document, series, std::string(Label) + "/Visible") ||
           FlagOf(document, series, "ChartDataLabel/Visible");
}

// --- Writing ---

// The names of the values as members; those of `kept` stay that name the same.
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
                                       : ElementXml("ChartMember", LeafOf("Label", value.label));
    }
    return ElementXml("ChartMembers", members);
}

class ChartChange {
 public:
    ChartChange(Document& document, ElementId chart, ChartDesign design)
        : m_document(document),
          m_chart(chart),
          m_now(ReadChartDesign(document, chart)),
          m_categoryTree(ReadCategories(document, chart)),
          m_seriesTree(ReadSeriesGroups(document, chart)),
          m_design(std::move(design)) {}

    void Make() {
        const bool isOtherType = m_now.type != m_design.type || m_now.subtype != m_design.subtype;
        CompleteValues(m_design, isOtherType);
        FitLevels(m_design.categories);
        FitLevels(m_design.series);
        if (!m_design.hasOtherGroups) {
            PutGroups();
        }
        PutSeries(isOtherType);
        PutPoints();
        PutTrimmedText(m_document, m_chart, "DataSetName", m_now.dataSet, m_design.dataSet);
        PutTrimmedText(m_document, m_chart, "Palette", m_now.palette, m_design.palette);
        PutTitles();
        PutLegend();
        PutLabels();
    }

 private:
    void Replace(std::string_view hierarchy, const std::string& members) {
        const ElementId old = m_document.Find(m_chart, hierarchy);
        const std::string xml = ElementXml(hierarchy, members);
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
            Replace(Categories, ChartMembersXml(m_document, m_design.categories, {}, names));
        }
        const auto labels = [](const ChartDesign& design) {
            std::vector<std::pair<ElementId, std::string>> all;
            for (const ChartValue& value : design.values) {
                all.emplace_back(value.series, value.label);
            }
            return all;
        };
        if (m_now.series != m_design.series || labels(m_now) != labels(m_design)) {
            const std::string inner = LabelsXml(m_document, m_now, m_seriesTree.labels.front(), m_design);
            Replace(Series, ChartMembersXml(m_document, m_design.series, inner, names));
        }
    }

    // Each leaf of the series groups has a series for each value; one of a new leaf is a copy.
    void PutSeries(bool isOtherType) {
        EnsureChild(m_document, EnsureChild(m_document, m_chart, "ChartData"), "ChartSeriesCollection");
        const std::vector<std::size_t> leaves = m_design.hasOtherGroups
                                                    ? std::vector<std::size_t>{0}
                                                    : OldLeaves(m_design.series, m_seriesTree.leaves);
        std::vector<ElementId> wanted;
        for (const std::size_t leaf : leaves) {
            for (const ChartValue& value : m_design.values) {
                wanted.push_back(SeriesFor(value, leaf, wanted));
            }
        }
        for (const ElementId old : ChildrenNamed(m_document, m_chart, Collection, "ChartSeries")) {
            if (std::find(wanted.begin(), wanted.end(), old) == wanted.end()) {
                Remove(m_document, old);
            }
        }
        PutOrder(wanted);
        for (std::size_t index = 0; index < wanted.size(); ++index) {
            if (isOtherType) {
                SetText(m_document, wanted[index], "Type", m_design.type);
                SetText(m_document, wanted[index], "Subtype", m_design.subtype);
            }
            const ChartValue& value = m_design.values[index % m_design.values.size()];
            for (const auto& [name, text] : value.values) {
                PutValue(wanted[index], OldValueOf(value, name), name, text);
            }
        }
        m_series = std::move(wanted);
    }

    ElementId SeriesFor(const ChartValue& value, std::size_t leaf, const std::vector<ElementId>& taken) {
        const ElementId collection = m_document.Find(m_chart, Collection);
        const std::string name = SeriesName(
            m_document, m_chart, ChildrenNamed(m_document, m_chart, Collection, "ChartSeries").size() + 1);
        if (value.series == NoElement) {
            return InsertXml(m_document, collection, SeriesXml(m_design, value, name));
        }
        const ElementId own = leaf == 0 || leaf > value.copies.size() ? value.series : value.copies[leaf - 1];
        if (std::find(taken.begin(), taken.end(), own) == taken.end()) {
            return own;
        }
        const ElementId copy = InsertXml(m_document, collection, XmlOf(m_document, own));
        SetAttribute(m_document, copy, "Name", name);
        return copy;
    }

    // What the first point of the value says now.
    std::optional<std::string> OldValueOf(const ChartValue& value, const std::string& name) const {
        for (const ChartValue& old : m_now.values) {
            const auto found = old.values.find(name);
            if (value.series != NoElement && old.series == value.series && found != old.values.end()) {
                return found->second;
            }
        }
        return std::nullopt;
    }

    // Points that say something else than the first one keep that.
    void PutValue(ElementId series, const std::optional<std::string>& old, const std::string& name,
                  const std::string& text) {
        const std::string path = "ChartDataPointValues/" + name;
        const std::vector<ElementId> points = ChartPointsOf(m_document, series);
        for (const ElementId point : points) {
            const std::string now = TrimmedTextAt(m_document, point, path);
            if (now != text && (!old || now == *old)) {
                SetText(m_document, point, path, text);
            }
        }
        if (points.empty() && !text.empty()) {
            SetText(m_document, series, std::string(Point) + "/" + path, text);
        }
    }

    void PutOrder(const std::vector<ElementId>& wanted) {
        const ElementId collection = m_document.Find(m_chart, Collection);
        for (std::size_t index = 0; index < wanted.size(); ++index) {
            const ElementId there = ChildrenNamed(m_document, m_chart, Collection, "ChartSeries")[index];
            if (there != wanted[index]) {
                Move(m_document, wanted[index], collection, there);
            }
        }
    }

    // A series that is new has one point.
    void PutPoints() {
        const std::vector<std::size_t> leaves = OldLeaves(m_design.categories, m_categoryTree.leaves);
        for (const ElementId series : m_design.hasOtherGroups ? std::vector<ElementId>{} : m_series) {
            PutChartPoints(m_document, series, leaves, m_categoryTree.leaves.size());
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
        PutAxisTitle(ChartAxis::Categories, m_now.categoryTitle, m_design.categoryTitle);
        PutAxisTitle(ChartAxis::Values, m_now.valueTitle, m_design.valueTitle);
    }

    void PutAxisTitle(ChartAxis kind, const std::string& old, const std::string& title) {
        if (old == title) {
            return;
        }
        const std::string_view axes = kind == ChartAxis::Values ? ValueAxes : CategoryAxes;
        const ElementId axis = m_document.Find(m_chart, AxisPath(axes));
        if (axis == NoElement) {
            const ElementId area = m_document.Find(m_chart, Area);
            InsertXml(m_document, EnsureChild(m_document, area, axes), AxisXml(kind, m_design));
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
        for (const ElementId series : m_series) {
            const bool isOfSeries = m_document.Find(series, Label) == NoElement &&
                                    m_document.Find(series, "ChartDataLabel") != NoElement;
            if (ShowsLabels(m_document, series) == m_design.showsLabels) {
                continue;
            }
            for (const ElementId owner :
                 isOfSeries ? std::vector{series} : ChartPointsOf(m_document, series)) {
                SetText(m_document, owner, "ChartDataLabel/Visible", m_design.showsLabels ? "true" : "false");
                if (m_design.showsLabels &&
                    TrimmedTextAt(m_document, owner, "ChartDataLabel/Label").empty()) {
                    SetText(m_document, owner, "ChartDataLabel/UseValueAsLabel", "true");
                }
            }
        }
    }

    Document& m_document;
    const ElementId m_chart;
    const ChartDesign m_now;
    const ChartTree m_categoryTree, m_seriesTree;
    ChartDesign m_design;
    std::vector<ElementId> m_series;  // of the leaves of the series groups, in their order
};

}  // namespace

bool IsOlderChart(const Document& document, ElementId chart) {
    return std::none_of(std::begin(NewerElements), std::end(NewerElements),
                        [&](std::string_view name) { return document.Find(chart, name) != NoElement; });
}

bool HasChartDesign(const Document& document, ElementId chart) {
    return !IsOlderChart(document, chart) || IsOlderSchema(document);
}

const ChartType* TypeOf(const ChartDesign& design) {
    return FindChartType(design.type, design.subtype);
}

std::vector<std::string> ValueNamesOf(const ChartDesign& design) {
    const ChartType* type = TypeOf(design);
    std::vector<std::string> names;
    if (!type && !design.values.empty()) {
        for (const auto& [name, value] : design.values.front().values) {
            names.push_back(name);
        }
    }
    return names.empty() ? ValueNamesOf(type) : names;
}

void CompleteValues(ChartDesign& design, bool isOtherType) {
    for (ChartValue& value : design.values) {
        if (!isOtherType && value.series != NoElement) {
            continue;
        }
        const auto any = std::find_if(value.values.begin(), value.values.end(),
                                      [](const auto& one) { return !one.second.empty(); });
        const auto own = value.values.find("Y");
        const std::string text = own != value.values.end() && !own->second.empty() ? own->second
                                 : any != value.values.end()                       ? any->second
                                                                                   : std::string();
        for (const std::string& name : ValueNamesOf(design)) {
            if (value.values[name].empty()) {
                value.values[name] = text;
            }
        }
    }
}

ChartDesign ReadChartDesign(const Document& document, ElementId chart) {
    ChartDesign design;
    if (IsOlderChart(document, chart)) {
        return ReadOlderChart(document, chart);
    }
    ReadValues(document, chart, design);
    const ChartTree categories = ReadCategories(document, chart);
    design.categories = categories.groups;
    design.hasOtherGroups = design.hasOtherGroups || !categories.isKnown;
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
    if (legend != NoElement && !FlagOf(document, legend, "Hidden")) {
        const std::string position = TrimmedTextAt(document, legend, "Position");
        design.legend = position.empty() ? "RightTop" : position;
    }
    return design;
}

void PutChartDesign(Document& document, ElementId chart, ChartDesign design) {
    const StepGroup group(document, "Change chart");
    if (IsOlderChart(document, chart)) {
        PutOlderChart(document, chart, std::move(design));
    } else {
        ChartChange(document, chart, std::move(design)).Make();
    }
}

std::string NewChartContent(const Document& document, const ChartDesign& design) {
    NewNames names(document);
    std::string labels, series;
    for (std::size_t index = 0; index < design.values.size(); ++index) {
        labels += ElementXml("ChartMember", LeafOf("Label", design.values[index].label));
        series += SeriesXml(design, design.values[index], SeriesName(document, NoElement, index + 1));
    }
    return ElementXml(Categories, ChartMembersXml(document, design.categories, {}, names)) +
           ElementXml(Series,
                      ChartMembersXml(document, design.series, ElementXml("ChartMembers", labels), names)) +
           ElementXml("ChartData", ElementXml("ChartSeriesCollection", series)) + AreasXml(design) +
           (design.legend.empty() ? std::string() : ElementXml("ChartLegends", LegendXml(design.legend))) +
           (design.title.empty() ? std::string() : ElementXml("ChartTitles", TitleXml(design.title))) +
           LeafOf("Palette", design.palette.empty() ? "BrightPastel" : design.palette);
}

}  // namespace designer
