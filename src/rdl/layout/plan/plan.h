// SPDX-License-Identifier: GPL-3.0-or-later
// The definition prepared for evaluation: properties compiled, members of data regions numbered. It depends
// on no data; one plan serves all instances of an item. Definition and programs must outlive it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/definition/chart.h"
#include "rdl/definition/gauge.h"
#include "rdl/definition/map/map.h"
#include "rdl/expr/operations/filter_operator.h"
#include "rdl/layout/plan/property.h"
#include "rdl/layout/plan/scope.h"
#include "rdl/layout/plan/style_plan.h"

namespace rdl::layout {

struct TablixPlan;
struct ChartPlan;
struct GaugePlan;
struct MapPlan;
struct ItemPlan;

struct FilterPlan {
    Property expression;
    FilterOperator op = FilterOperator::Equal;
    std::vector<Property> values;
};

struct SortPlan {
    Property value;
    bool descending = false;
};

struct PageBreakPlan {
    PageBreak::Location location = PageBreak::Location::None;
    Property disabled, resetPageNumber, pageName;
    bool AtStart() const {
        return location == PageBreak::Location::Start || location == PageBreak::Location::StartAndEnd;
    }
    bool AtEnd() const {
        return location == PageBreak::Location::End || location == PageBreak::Location::StartAndEnd;
    }
};

struct RunPlan {
    Property value, hyperlink, bookmarkLink;
    CharStylePlan style;
    std::string format;    // a constant ...
    Property formatValue;  // ... or an expression
    Property language;
    bool html = false;
};

struct ParagraphPlan {
    std::vector<RunPlan> runs;
    Property align, lineHeight, leftIndent, rightIndent, hangingIndent, spaceBefore, spaceAfter;
    const Paragraph* definition = nullptr;
};

// The background image of an item, and the last style computed with it.
struct BackgroundPlan {
    Property source, value, type, repeat, position;
    bool isChart = false;
    BoxStylePtr madeOf, made;
    std::string madePlace;
    // Returns null if the style has none.
    static std::unique_ptr<BackgroundPlan> Of(const Style& style, const Programs& programs, bool forChart);
};

struct BarcodePlan {
    Property symbology, showText, errorCorrection;
};

struct ItemPlan {
    const ReportItem* definition = nullptr;
    BoxStylePlan box;
    std::unique_ptr<BackgroundPlan> background;
    Property hidden, hyperlink, bookmarkLink, toolTip, bookmark, documentMapLabel;
    PageBreakPlan pageBreak;
    std::string column;  // Textbox: title of its column in formats that carry data; empty: none
    int layer = 0;       // z-order among siblings
    bool plain = false;  // has no link, bookmark, label and tool tip to evaluate

    std::vector<ParagraphPlan> paragraphs;            // Textbox
    bool hasMarkup = false;                           // some run is HTML
    std::vector<std::unique_ptr<ItemPlan>> children;  // Rectangle
    std::unique_ptr<TablixPlan> tablix;
    std::unique_ptr<ChartPlan> chart;
    std::unique_ptr<GaugePlan> gauge;
    std::unique_ptr<BarcodePlan> barcode;
    std::unique_ptr<MapPlan> map;
    Property value;                                            // Image, Barcode
    Property mimeType;                                         // Image
    std::vector<std::pair<std::string, Property>> parameters;  // Subreport
    Property noRows;                                           // Subreport
    CharStylePlan messageStyle;                                // Subreport, and the text of a Barcode

    // The scope of the item: region and groups.
    const TablixPlan* region = nullptr;
    int rowGroup = -1, columnGroup = -1;
    // The scope of HideDuplicates; empty if not set.
    std::string hideDuplicates;

    ItemPlan();
    ~ItemPlan();
    ItemPlan(const ItemPlan&) = delete;
    ItemPlan& operator=(const ItemPlan&) = delete;
};

struct GroupPlan {
    const Group* definition = nullptr;
    int parent = -1;  // innermost enclosing group of the same hierarchy; -1: none
    int level = 0;    // number of enclosing groups
    std::vector<Property> keys;
    std::vector<FilterPlan> filters;
    std::vector<SortPlan> sorts;
    std::vector<Property> variables;
    Property parentKey, documentMapLabel;
    PageBreakPlan pageBreak;
};

struct MemberPlan {
    const TablixMember* definition = nullptr;
    int group = -1;       // its own group; -1: none
    int scopeGroup = -1;  // its own or the innermost enclosing group; -1: none
    std::vector<int> children;
    int leaf = -1;  // body row or column; -1: not a leaf
    std::unique_ptr<ItemPlan> header;
    int headerBegin = 0, headerSpan = 0;  // header columns (rows) covered by the header cell
    Property hidden;
};

// Rows or columns.
struct HierarchyPlan {
    std::vector<MemberPlan> members;  // members of one parent are in order
    std::vector<int> roots;
    std::vector<GroupPlan> groups;  // in preorder
    std::vector<double> headerSizes;
    int leafCount = 0;
};

struct CellPlan {
    std::unique_ptr<ItemPlan> item;  // null: empty or covered
    int columnSpan = 1, rowSpan = 1;
};

struct TablixPlan {
    const Tablix* definition = nullptr;
    std::string dataSet;
    HierarchyPlan rows, columns;
    std::vector<std::vector<CellPlan>> cells;  // by leaf row and leaf column
    std::vector<std::vector<CellPlan>> corner;
    std::vector<FilterPlan> filters;
    std::vector<SortPlan> sorts;
    Property noRowsMessage;
    CharStylePlan messageStyle;
    bool hidesDuplicates = false;  // some text box hides duplicates
};

// A chart's properties are resolved when it is drawn: each is used once per instance.
struct ChartPlan {
    const Chart* definition = nullptr;
    std::unique_ptr<TablixPlan> data;
    const Programs* programs = nullptr;
};

// Creates plans. Raises rdl::Error naming the item for what cannot be drawn.
class Planner {
 public:
    explicit Planner(const Programs& programs) : m_programs(programs) {}
    std::unique_ptr<ItemPlan> Item(const ReportItem& item);
    std::vector<std::unique_ptr<ItemPlan>> Items(const std::vector<ItemPtr>& items);

 private:
    Property Of(const Expr& source) const { return {source, m_programs}; }
    PageBreakPlan Break(const PageBreak& source) const;
    std::vector<FilterPlan> Filters(const std::vector<Filter>& filters) const;
    std::vector<SortPlan> Sorts(const std::vector<Sort>& sorts) const;
    ParagraphPlan ParagraphOf(const Paragraph& paragraph, const Style& boxStyle) const;
    void Kinds(const ReportItem& item, ItemPlan& plan);
    std::unique_ptr<TablixPlan> Region(const Tablix& tablix);
    void Gauge(const GaugePanel& panel, ItemPlan& plan);
    std::unique_ptr<MapPlan> MapOf(const Map& map);
    void Hierarchy(const std::vector<TablixMember>& members, TableAxis axis, HierarchyPlan& plan);
    std::vector<int> Members(const std::vector<TablixMember>& members, TableAxis axis, int group,
                             double begin, std::vector<double>& begins, HierarchyPlan& plan);
    GroupPlan GroupOf(const TablixMember& member, int parent, const HierarchyPlan& plan) const;
    void Cells(const Tablix& tablix, TablixPlan& plan);

    const Programs& m_programs;
    const TablixPlan* m_region = nullptr;
    int m_rowGroup = -1, m_columnGroup = -1;
    bool m_hidesDuplicates = false;  // in the region being planned
};

}  // namespace rdl::layout
