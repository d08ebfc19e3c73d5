// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/older_charts.h"

#include <algorithm>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

constexpr const char* ValuesOfPoint = "DataPoints/DataPoint/DataValues";
constexpr const char* LabelOfPoint = "DataPoints/DataPoint/DataLabel";

struct OlderSide {
    const char *groupings, *grouping, *dynamic, *statics;
};
constexpr OlderSide OfCategories = {"CategoryGroupings", "CategoryGrouping", "DynamicCategories",
                                    "StaticCategories"};
constexpr OlderSide OfSeries = {"SeriesGroupings", "SeriesGrouping", "DynamicSeries", "StaticSeries"};

std::vector<ElementId> OlderSeries(const Document& document, ElementId chart) {
    return ChildrenNamed(document, chart, "ChartData", "ChartSeries");
}

std::string OlderGroupText(const Document& document, ElementId member) {
    return TrimmedTextAt(document, member, "Grouping/GroupExpressions/GroupExpression");
}

// The groupings stand in a list, each within the one before it; the last of the series may have the names of
// the values.
struct OlderGroups {
    std::vector<ChartGroup> groups;
    std::vector<ElementId> names;
    bool isKnown = true;
};

OlderGroups ReadOlderGroups(const Document& document, ElementId chart, const OlderSide& side) {
    OlderGroups read;
    for (const ElementId grouping : ChildrenNamed(document, chart, side.groupings, side.grouping)) {
        const ElementId dynamic = document.Find(grouping, side.dynamic);
        const bool isOne =
            dynamic != NoElement &&
            ChildrenNamed(document, dynamic, "Grouping/GroupExpressions", "GroupExpression").size() == 1;
        // Nothing comes after the names.
        read.isKnown = read.isKnown && read.names.empty();
        if (isOne) {
            read.groups.push_back(
                {dynamic, OlderGroupText(document, dynamic), static_cast<int>(read.groups.size()) + 1});
        } else if (dynamic == NoElement && &side == &OfSeries) {
            read.names = ChildrenNamed(document, grouping, side.statics, "StaticMember");
            read.isKnown = read.isKnown && !read.names.empty();
        } else {
            read.isKnown = false;
        }
    }
    return read;
}

// The values of a point have no names, but an order.
std::vector<std::string> OlderValueNames(const std::string& type, const std::string& subtype) {
    if (SameAscii(type, "Scatter") || SameAscii(type, "Bubble")) {
        return {"X", "Y", "Size"};
    }
    if (SameAscii(type, "Stock")) {
        return subtype.empty() || SameAscii(subtype, "HighLowClose")
                   ? std::vector<std::string>{"High", "Low", "End"}
                   : std::vector<std::string>{"High", "Low", "Start", "End"};
    }
    return {"Y"};
}

std::string OlderType(const Document& document, ElementId chart) {
    const std::string type = TrimmedTextAt(document, chart, "Type");
    return type.empty() ? "Column" : type;
}

// The words of a type in these files; others stay as they are.
std::pair<std::string, std::string> OlderWords(const ChartDesign& design) {
    const ChartType* type = TypeOf(design);
    if (!type) {
        return {design.type, design.subtype};
    }
    if (type->olderType.empty()) {
        throw EditError("A chart of 2003 or 2005 cannot have this type");
    }
    return {std::string(type->olderType), std::string(type->olderSubtype)};
}

class OlderChange {
 public:
    OlderChange(Document& document, ElementId chart, ChartDesign design)
        : m_document(document),
          m_chart(chart),
          m_now(ReadOlderChart(document, chart)),
          m_design(std::move(design)) {}

    void Make() {
        const bool isOtherType = m_now.type != m_design.type || m_now.subtype != m_design.subtype;
        CompleteValues(m_design, isOtherType);
        CheckLevels();
        if (isOtherType) {
            const auto [type, subtype] = OlderWords(m_design);
            SetText(m_document, m_chart, "Type", type);
            SetText(m_document, m_chart, "Subtype", subtype);
        }
        if (!m_design.hasOtherGroups) {
            PutGroups();
        }
        PutSeries(isOtherType);
        PutTrimmedText(m_document, m_chart, "DataSetName", m_now.dataSet, m_design.dataSet);
        PutTrimmedText(m_document, m_chart, "Palette", m_now.palette, m_design.palette);
        PutTitle("Title", m_now.title, m_design.title);
        PutAxisTitle("CategoryAxis", m_now.categoryTitle, m_design.categoryTitle);
        PutAxisTitle("ValueAxis", m_now.valueTitle, m_design.valueTitle);
        PutLegend();
        PutLabels();
    }

 private:
    void CheckLevels() const {
        for (const auto* groups : {&m_design.categories, &m_design.series}) {
            for (std::size_t at = 0; at < groups->size(); ++at) {
                if ((*groups)[at].level != static_cast<int>(at) + 1) {
                    throw EditError("A chart of 2003 or 2005 cannot have groups beside each other");
                }
            }
        }
    }

    std::string GroupXml(const ChartGroup& group, const OlderSide& side, NewNames& names) const {
        if (group.member != NoElement && OlderGroupText(m_document, group.member) == group.expression) {
            return XmlOf(m_document, m_document.Parent(group.member));
        }
        const std::string field = FieldOfValue(group.expression);
        const std::string content =
            "<Grouping Name=\"" + names.Take((field.empty() ? "Chart" : field) + "Group") + "\">" +
            ElementXml("GroupExpressions", LeafOf("GroupExpression", group.expression)) + "</Grouping>" +
            ElementXml("Sorting", ElementXml("SortBy", LeafOf("SortExpression", group.expression))) +
            LeafOf("Label", group.expression);
        return ElementXml(side.grouping, ElementXml(side.dynamic, content));
    }

    // A value without a name is the only one.
    std::string NamesXml() const {
        const std::vector<ElementId> kept = ReadOlderGroups(m_document, m_chart, OfSeries).names;
        if (m_design.values.size() == 1 && m_design.values.front().label.empty()) {
            return {};
        }
        std::string members;
        for (const ChartValue& value : m_design.values) {
            ElementId same = NoElement;
            for (std::size_t index = 0; index < m_now.values.size() && index < kept.size(); ++index) {
                const bool isSame = value.series != NoElement && m_now.values[index].series == value.series &&
                                    m_now.values[index].label == value.label;
                same = isSame ? kept[index] : same;
            }
            members += same != NoElement ? XmlOf(m_document, same)
                                         : ElementXml("StaticMember", LeafOf("Label", value.label));
        }
        return ElementXml(OfSeries.grouping, ElementXml(OfSeries.statics, members));
    }

    void Replace(const OlderSide& side, const std::vector<ChartGroup>& groups, const std::string& more,
                 NewNames& names) {
        std::string content;
        for (const ChartGroup& group : groups) {
            content += GroupXml(group, side, names);
        }
        content += more;
        const ElementId old = m_document.Find(m_chart, side.groupings);
        if (!content.empty()) {
            old == NoElement ? InsertXml(m_document, m_chart, ElementXml(side.groupings, content))
                             : InsertXml(m_document, m_chart, ElementXml(side.groupings, content), old);
        }
        if (old != NoElement) {
            Remove(m_document, old);
        }
    }

    void PutGroups() {
        NewNames names(m_document);
        if (m_now.categories != m_design.categories) {
            Replace(OfCategories, m_design.categories, {}, names);
        }
        const bool areSame =
            std::equal(m_now.values.begin(), m_now.values.end(), m_design.values.begin(),
                       m_design.values.end(), [](const ChartValue& one, const ChartValue& other) {
                           return one.series == other.series && one.label == other.label;
                       });
        if (m_now.series != m_design.series || !areSame) {
            Replace(OfSeries, m_design.series, NamesXml(), names);
        }
    }

    std::string DataValuesXml(const ChartValue& value) const {
        std::string xml;
        for (const std::string& name : m_names) {
            const auto found = value.values.find(name);
            xml += ElementXml("DataValue",
                              LeafOf("Value", found == value.values.end() ? std::string() : found->second));
        }
        return ElementXml("DataValues", xml);
    }

    std::string SeriesXml(const ChartValue& value) const {
        const std::string label =
            m_design.showsLabels ? ElementXml("DataLabel", LeafOf("Visible", "true")) : std::string();
        return ElementXml("ChartSeries",
                          ElementXml("DataPoints", ElementXml("DataPoint", DataValuesXml(value) + label)));
    }

    void PutSeries(bool isOtherType) {
        const auto [type, subtype] = OlderWords(m_design);
        m_names = OlderValueNames(type, subtype);
        // Bubbles alone have a size.
        m_names.resize(SameAscii(type, "Scatter") ? 2 : m_names.size());
        const ElementId data = EnsureChild(m_document, m_chart, "ChartData");
        for (ChartValue& value : m_design.values) {
            if (value.series == NoElement) {
                value.series = InsertXml(m_document, data, SeriesXml(value));
            } else {
                PutValues(value, isOtherType);
            }
        }
        for (const ElementId old : OlderSeries(m_document, m_chart)) {
            const bool stays = std::any_of(m_design.values.begin(), m_design.values.end(),
                                           [old](const ChartValue& value) { return value.series == old; });
            if (!stays) {
                Remove(m_document, old);
            }
        }
        for (std::size_t index = 0; index < m_design.values.size(); ++index) {
            const ElementId there = OlderSeries(m_document, m_chart)[index];
            if (there != m_design.values[index].series) {
                Move(m_document, m_design.values[index].series, data, there);
            }
        }
    }

    // A type with other values gets all of them again.
    void PutValues(const ChartValue& value, bool isOtherType) {
        const auto there = ChildrenNamed(m_document, value.series, ValuesOfPoint, "DataValue");
        const auto textOf = [&](const std::string& name) {
            const auto found = value.values.find(name);
            return found == value.values.end() ? std::string() : found->second;
        };
        if (isOtherType || there.size() < m_names.size()) {
            bool isOther = there.size() != m_names.size();
            for (std::size_t at = 0; !isOther && at < there.size(); ++at) {
                isOther = TrimmedTextAt(m_document, there[at], "Value") != textOf(m_names[at]);
            }
            const bool isEmpty = std::all_of(m_names.begin(), m_names.end(),
                                             [&](const std::string& name) { return textOf(name).empty(); });
            if (isOther && !isEmpty && (isOtherType || IsChanged(value))) {
                RemoveAt(m_document, value.series, ValuesOfPoint);
                InsertXml(
                    m_document,
                    EnsureChild(m_document, EnsureChild(m_document, value.series, "DataPoints"), "DataPoint"),
                    DataValuesXml(value));
            }
            return;
        }
        for (std::size_t at = 0; at < m_names.size(); ++at) {
            if (TrimmedTextAt(m_document, there[at], "Value") != textOf(m_names[at])) {
                SetText(m_document, there[at], "Value", textOf(m_names[at]));
            }
        }
    }

    bool IsChanged(const ChartValue& value) const {
        return std::none_of(m_now.values.begin(), m_now.values.end(), [&](const ChartValue& old) {
            return old.series == value.series && old.values == value.values;
        });
    }

    void PutTitle(const std::string& path, const std::string& old, const std::string& title) {
        if (old != title) {
            title.empty() ? RemoveAt(m_document, m_chart, path)
                          : SetText(m_document, m_chart, path + "/Caption", title);
        }
    }

    // An axis that the file does not have is hidden.
    void PutAxisTitle(const std::string& axis, const std::string& old, const std::string& title) {
        if (old != title && !title.empty() && m_document.Find(m_chart, axis + "/Axis") == NoElement) {
            SetText(m_document, m_chart, axis + "/Axis/Visible", "true");
        }
        PutTitle(axis + "/Axis/Title", old, title);
    }

    void PutLegend() {
        if (m_now.legend != m_design.legend) {
            SetText(m_document, m_chart, "Legend/Visible", m_design.legend.empty() ? "false" : "true");
            if (!m_design.legend.empty()) {
                SetText(m_document, m_chart, "Legend/Position", m_design.legend);
            }
        }
    }

    void PutLabels() {
        for (const ChartValue& value : m_design.values) {
            const std::string path = std::string(LabelOfPoint) + "/Visible";
            if (m_now.showsLabels != m_design.showsLabels &&
                FlagOf(m_document, value.series, path) != m_design.showsLabels) {
                SetText(m_document, value.series, path, m_design.showsLabels ? "true" : "false");
            }
        }
    }

    Document& m_document;
    const ElementId m_chart;
    const ChartDesign m_now;
    ChartDesign m_design;
    std::vector<std::string> m_names;  // of the values, in their order
};

}  // namespace

ChartDesign ReadOlderChart(const Document& document, ElementId chart) {
    ChartDesign design;
    const std::string type = OlderType(document, chart);
    const std::string subtype = TrimmedTextAt(document, chart, "Subtype");
    const bool isUsualStock = SameAscii(type, "Stock") && subtype.empty();  // without an opening value
    const ChartType* row = isUsualStock ? nullptr : FindOlderChartType(type, subtype);
    design.type = row ? std::string(row->type) : type;
    design.subtype = row ? std::string(row->subtype) : subtype;
    const OlderGroups categories = ReadOlderGroups(document, chart, OfCategories);
    const OlderGroups series = ReadOlderGroups(document, chart, OfSeries);
    design.categories = categories.groups;
    design.series = series.groups;
    const std::vector<std::string> names = OlderValueNames(type, subtype);
    const std::vector<ElementId> all = OlderSeries(document, chart);
    bool hasOnePoint = true;
    for (std::size_t index = 0; index < all.size(); ++index) {
        ChartValue& value = design.values.emplace_back();
        value.series = all[index];
        value.label =
            index < series.names.size() ? TrimmedTextAt(document, series.names[index], "Label") : "";
        const auto values = ChildrenNamed(document, all[index], ValuesOfPoint, "DataValue");
        for (std::size_t at = 0; at < values.size() && at < names.size(); ++at) {
            value.values[names[at]] = TrimmedTextAt(document, values[at], "Value");
        }
        hasOnePoint =
            hasOnePoint && ChildrenNamed(document, all[index], "DataPoints", "DataPoint").size() <= 1;
    }
    const bool fits = series.names.empty() ? all.size() <= 1 : all.size() == series.names.size();
    design.hasOtherGroups = !categories.isKnown || !series.isKnown || !fits || !hasOnePoint;
    design.showsLabels = !all.empty() && std::all_of(all.begin(), all.end(), [&](ElementId one) {
        return FlagOf(document, one, std::string(LabelOfPoint) + "/Visible");
    });
    design.dataSet = TrimmedTextAt(document, chart, "DataSetName");
    design.palette = TrimmedTextAt(document, chart, "Palette");
    design.title = TrimmedTextAt(document, chart, "Title/Caption");
    design.categoryTitle = TrimmedTextAt(document, chart, "CategoryAxis/Axis/Title/Caption");
    design.valueTitle = TrimmedTextAt(document, chart, "ValueAxis/Axis/Title/Caption");
    if (FlagOf(document, chart, "Legend/Visible")) {
        const std::string position = TrimmedTextAt(document, chart, "Legend/Position");
        design.legend = position.empty() ? "RightTop" : position;
    }
    return design;
}

void PutOlderChart(Document& document, ElementId chart, ChartDesign design) {
    OlderChange(document, chart, std::move(design)).Make();
}

}  // namespace designer
