// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/design_charts.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "designer/document/constants.h"
#include "designer/document/placeholder_text.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

// One row for each pair of a category and a series. The columns are named by their fields.
constexpr std::string_view FieldNames[] = {"c", "s", "v", "x", "h", "l", "o", "e", "z"};
constexpr std::string_view SampleRows[][std::size(FieldNames)] = {
    {"A", "Series 1", "62", "1.0", "74", "48", "55", "66", "3"},
    {"B", "Series 1", "85", "2.2", "93", "60", "66", "82", "6"},
    {"C", "Series 1", "47", "3.1", "64", "38", "58", "43", "2"},
    {"D", "Series 1", "73", "4.4", "88", "59", "61", "79", "5"},
    {"A", "Series 2", "38", "1.4", "52", "29", "33", "47", "4"},
    {"B", "Series 2", "54", "2.7", "69", "41", "48", "60", "2"},
    {"C", "Series 2", "66", "3.6", "78", "51", "70", "57", "5"},
    {"D", "Series 2", "41", "4.9", "57", "30", "36", "50", "3"},
};

// Series that are written one by one show the same rows, and differ in these.
constexpr std::string_view Factors[] = {"1", "0.7", "1.3", "0.5", "0.85"};

struct ValueField {
    std::string_view element, field;
};
constexpr ValueField PointValues[] = {{"X", "x"},    {"Y", "v"},      {"High", "h"},
                                      {"Low", "l"},  {"Start", "o"},  {"End", "e"},
                                      {"Mean", "v"}, {"Median", "v"}, {"Size", "z"}};

// What does not fit sample data, or shows nothing.
constexpr std::string_view NotInCharts[] = {"DataSetName",
                                            "Filters",
                                            "SortExpressions",
                                            "Sorting",
                                            "Visibility",
                                            "ToolTip",
                                            "ActionInfo",
                                            "Action",
                                            "PageBreak",
                                            "PageBreakAtStart",
                                            "PageBreakAtEnd",
                                            "PageName",
                                            "Bookmark",
                                            "NoRows",
                                            "NoRowsMessage",
                                            "DocumentMapLabel",
                                            "Parent",
                                            "Variables",
                                            "KeepTogether",
                                            "ChartDerivedSeriesCollection",
                                            "Minimum",
                                            "Maximum",
                                            "Interval",
                                            "CrossAt",
                                            "Min",
                                            "Max",
                                            "MajorInterval",
                                            "MinorInterval",
                                            "RepeatWith",
                                            "DataElementName",
                                            "DataElementOutput",
                                            "ReGroupExpressions"};

std::string SampleValue(std::string_view field, std::size_t series) {
    return "=Avg(Fields!" + std::string(field) + ".Value) * " +
           std::string(Factors[series % std::size(Factors)]);
}

class ChartWriter {
 public:
    explicit ChartWriter(DesignWriter& writer) : m_writer(writer), m_tree(writer.Tree()) {}

    void Write(int chart) {
        m_chart = chart;
        m_writer.Leaf("DataSetName", DesignChartSet);
        for (const int child : m_tree.Children(chart)) {
            const std::string_view name = m_tree.LocalName(child);
            constexpr std::string_view OfItem[] = {"Left", "Top", "Width", "Height", "ZIndex", "Style"};
            if (std::find(std::begin(OfItem), std::end(OfItem), name) == std::end(OfItem)) {
                Element(child);
            }
        }
    }

 private:
    bool IsText(int element) const { return m_tree[element].firstChild == NoIndex; }

    void Element(int element) {
        const std::string_view name = m_tree.LocalName(element);
        const bool isDropped =
            std::find(std::begin(NotInCharts), std::end(NotInCharts), name) != std::end(NotInCharts);
        if (isDropped || !m_tree.IsOfReport(element)) {
            return;
        }
        if (name == "Style") {
            m_writer.Copy(element);
        } else if (IsText(element)) {
            Text(element, name);
        } else if (name == "GroupExpressions") {
            Grouped(element);
        } else {
            m_series += name == "ChartSeries" ? 1 : 0;
            const bool wasInSeries = m_isInSeries;
            m_isInSeries = m_isInSeries || name == "ChartSeriesHierarchy" || name == "SeriesGroupings";
            m_value = name == "DataValues" ? 0 : m_value;
            m_writer.Around(element, [&] {
                for (const int child : m_tree.Children(element)) {
                    Element(child);
                }
            });
            m_isInSeries = wasInSeries;
        }
    }

    std::string OwnLabel() const { return m_isInSeries ? "=Fields!s.Value" : "=Fields!c.Value"; }

    void Grouped(int element) {
        m_writer.Around(element, [&] {
            if (m_tree[element].firstChild != NoIndex) {
                m_writer.Leaf("GroupExpression", OwnLabel());
            }
        });
    }

    // Expressions become those of the sample data, or the defaults.
    void Text(int element, std::string_view name) {
        const std::string text = m_tree.TextOf(element);
        const std::string_view parent = m_tree.LocalName(m_tree[element].parent);
        if (!IsExpression(text)) {
            m_writer.Copy(element);
        } else if (parent == "ChartDataPointValues") {
            for (const ValueField& value : PointValues) {
                if (value.element == name) {
                    m_writer.Leaf(name, SampleValue(value.field, m_series - 1));
                }
            }
        } else if (parent == "DataValue" && name == "Value") {
            m_writer.Leaf(name, SampleValue(OlderField(m_value++), m_series - 1));
        } else if (name == "Label" && (parent == "ChartMember" || parent.starts_with("Dynamic"))) {
            m_writer.Leaf(name, OwnLabel());
        } else if (name == "AxisLabel") {
            m_writer.Leaf(name, "=Fields!c.Value");
        } else if (name == "Caption" || name == "LegendText" ||
                   (name == "Label" && parent == "StaticMember")) {
            m_writer.Leaf(name, PlaceholderOf(text));
        }
    }

    // The values of a point of the older schemas go by their order.
    std::string_view OlderField(std::size_t index) const {
        const std::string type = m_writer.ChildText(m_chart, "Type");
        const std::string subtype = m_writer.ChildText(m_chart, "Subtype");
        constexpr std::string_view Points[] = {"x", "v", "z"}, Opens[] = {"h", "l", "o", "e"},
                                   Closes[] = {"h", "l", "e"};
        if (SameAscii(type, "Scatter") || SameAscii(type, "Bubble")) {
            return index < std::size(Points) ? Points[index] : "v";
        }
        if (SameAscii(type, "Stock")) {
            const bool opens = !subtype.empty() && !SameAscii(subtype, "HighLowClose");
            return opens ? Opens[std::min(index, std::size(Opens) - 1)]
                         : Closes[std::min(index, std::size(Closes) - 1)];
        }
        return "v";
    }

    DesignWriter& m_writer;
    const SourceTree& m_tree;
    int m_chart = NoIndex;
    std::size_t m_series = 0;  // begun
    std::size_t m_value = 0;   // of a point of the older schemas
    bool m_isInSeries = false;
};

// --- Gauges ---

class GaugeWriter {
 public:
    explicit GaugeWriter(DesignWriter& writer) : m_writer(writer), m_tree(writer.Tree()) {}

    void Write(int panel) {
        m_writer.Leaf("DataSetName", DesignRowSet);
        for (const int child : m_tree.Children(panel)) {
            const std::string_view name = m_tree.LocalName(child);
            constexpr std::string_view Parts[] = {"LinearGauges",    "RadialGauges", "NumericIndicators",
                                                  "StateIndicators", "GaugeImages",  "GaugeLabels",
                                                  "BackFrame",       "AutoLayout"};
            if (std::find(std::begin(Parts), std::end(Parts), name) != std::end(Parts)) {
                Element(child);
            }
        }
    }

 private:
    void Element(int element) {
        const std::string_view name = m_tree.LocalName(element);
        constexpr std::string_view Dropped[] = {
            "ActionInfo", "ToolTip", "Formula", "Multiplier", "AddConstant", "Hidden", "TransformationScope"};
        const bool isPicture =
            m_tree.Child(element, "Source") != NoIndex && m_tree.Child(element, "Value") != NoIndex;
        if (std::find(std::begin(Dropped), std::end(Dropped), name) != std::end(Dropped) ||
            !m_tree.IsOfReport(element) || (isPicture && !m_writer.IsEmbedded(element))) {
            return;
        }
        if (name == "GaugeInputValue") {
            m_writer.Open(name);
            m_writer.Leaf("Value", Sample(element));
            m_writer.Close(name);
        } else if (name == "Style") {
            m_writer.Copy(element);
        } else if (m_tree[element].firstChild != NoIndex) {
            m_writer.Around(element, [&] {
                for (const int child : m_tree.Children(element)) {
                    Element(child);
                }
            });
        } else if (name == "Text" && IsExpression(m_tree.TextOf(element))) {
            m_writer.Leaf(name, PlaceholderOf(m_tree.TextOf(element)));
        } else {
            m_writer.Copy(element);
        }
    }

    // A value three fifths up the scale or the range of values around the input.
    std::string Sample(int input) const {
        for (int owner = m_tree[input].parent; owner != NoIndex; owner = m_tree[owner].parent) {
            const std::string low = m_writer.ChildText(owner, "MinimumValue/Value");
            const std::string high = m_writer.ChildText(owner, "MaximumValue/Value");
            if (low.empty() && high.empty()) {
                continue;
            }
            const double least = PlainNumber(low).value_or(0), most = PlainNumber(high).value_or(100);
            char digits[400];
            const auto [end, error] = std::to_chars(
                digits, digits + sizeof(digits), least + 0.6 * (most - least), std::chars_format::fixed, 4);
            return error == std::errc() ? std::string(digits, end) : "60";
        }
        return "60";
    }

    DesignWriter& m_writer;
    const SourceTree& m_tree;
};

// --- Bar codes ---

std::string Plain(std::string_view name) {
    const std::size_t mark = name.find_last_of(":.");
    std::string plain;
    for (const char c : mark == std::string_view::npos ? name : name.substr(mark + 1)) {
        if (IsAsciiLetterOrDigit(c)) {
            plain += ToLower(c);
        }
    }
    return plain;
}

bool IsValueName(std::string_view name) {
    const std::string plain = Plain(name);
    return plain == "value" || plain == "text" || plain == "data" || plain == "content";
}

// A value that the symbology has, by the beginning of its name without marks.
struct SampleCode {
    std::string_view symbology, value;
};
constexpr SampleCode SampleCodes[] = {{"ean13", "978316148410"},
                                      {"isbn", "9783161484100"},
                                      {"ean8", "1234567"},
                                      {"upca", "12345678901"},
                                      {"upce", "123456"},
                                      {"interleaved", "12345678"},
                                      {"itf14", "1234567890123"},
                                      {"codabar", "A12345A"},
                                      {"gs1", "[01]09783161484100"},
                                      {"ean128", "[01]09783161484100"},
                                      {"ucc128", "[01]09783161484100"},
                                      {"intelligentmail", "01234567094987654321"},
                                      {"royalmail", "SN34RD1A"}};

std::string SampleCodeOf(const std::string& symbology) {
    const std::string plain = Plain(symbology);
    for (const SampleCode& code : SampleCodes) {
        if (plain.starts_with(code.symbology)) {
            return std::string(code.value);
        }
    }
    return "12345";
}

// The properties of a bar code: children of the item itself or its custom properties.
struct CodeProperty {
    int element;  // which is written
    int value;    // which has the value
    std::string name;
};

std::vector<CodeProperty> CodeProperties(const DesignWriter& writer, int element) {
    const SourceTree& tree = writer.Tree();
    std::vector<CodeProperty> properties;
    const bool isCustom = tree.LocalName(element) == "CustomReportItem";
    const int owner = isCustom ? tree.Child(element, "CustomProperties") : element;
    for (int child = owner == NoIndex ? NoIndex : tree[owner].firstChild; child != NoIndex;
         child = tree[child].nextSibling) {
        const int value = isCustom ? tree.Child(child, "Value") : child;
        if (value != NoIndex && tree[value].firstChild == NoIndex) {
            properties.push_back(
                {child, value,
                 isCustom ? writer.ChildText(child, "Name") : std::string(tree.LocalName(child))});
        }
    }
    return properties;
}

}  // namespace

void WriteChart(DesignWriter& writer, int element) {
    ChartWriter(writer).Write(element);
}

void WriteGaugePanel(DesignWriter& writer, int element) {
    GaugeWriter(writer).Write(element);
}

bool IsBarcode(const DesignWriter& writer, int element) {
    const std::vector<CodeProperty> properties = CodeProperties(writer, element);
    return std::any_of(properties.begin(), properties.end(),
                       [](const CodeProperty& property) { return IsValueName(property.name); });
}

void WriteBarcode(DesignWriter& writer, int element) {
    const SourceTree& tree = writer.Tree();
    const bool isCustom = tree.LocalName(element) == "CustomReportItem";
    std::string symbology = writer.ChildText(element, "Type");
    const std::vector<CodeProperty> properties = CodeProperties(writer, element);
    for (const CodeProperty& property : properties) {
        if (Plain(property.name) == "symbology" || Plain(property.name) == "barcodetype") {
            symbology = tree.TextOf(property.value);
        }
    }
    if (isCustom) {
        writer.Leaf("Type", writer.ChildText(element, "Type"));
        writer.Open("CustomProperties");
    }
    for (const CodeProperty& property : properties) {
        const std::string text = tree.TextOf(property.value);
        constexpr std::string_view OfItem[] = {"Left", "Top", "Width", "Height", "ZIndex", "Style"};
        const bool isOfItem =
            !isCustom && std::find(std::begin(OfItem), std::end(OfItem), property.name) != std::end(OfItem);
        if (isOfItem || (IsExpression(text) && !IsValueName(property.name))) {
            continue;
        }
        const std::string shown = IsExpression(text) ? SampleCodeOf(symbology) : text;
        if (isCustom) {
            writer.Open("CustomProperty");
            writer.Leaf("Name", property.name);
            writer.Leaf("Value", shown);
            writer.Close("CustomProperty");
        } else {
            writer.Leaf(property.name, shown);
        }
    }
    if (isCustom) {
        writer.Close("CustomProperties");
    }
}

void WriteChartRows(DesignWriter& writer) {
    writer.OpenNamed("DataSet", DesignChartSet);
    writer.Open("Fields");
    for (const std::string_view field : FieldNames) {
        writer.OpenNamed("Field", field);
        writer.Leaf("DataField", field);
        const bool isText = field == FieldNames[0] || field == FieldNames[1];
        writer.Leaf("TypeName", isText ? "System.String" : "System.Double");
        writer.Close("Field");
    }
    writer.Close("Fields");
    writer.Open("Rows");
    for (const auto& row : SampleRows) {
        writer.Open("Row");
        for (std::size_t i = 0; i < std::size(FieldNames); ++i) {
            writer.Leaf(FieldNames[i], row[i]);
        }
        writer.Close("Row");
    }
    writer.Close("Rows");
    writer.Close("DataSet");
}

}  // namespace designer
