// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/child_order.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <unordered_map>

namespace designer {
namespace {

struct Order {
    std::string_view parents;  // separated by blanks, and so are the children
    std::string_view children;
    bool isItem = false;  // the children of every report item follow
};

constexpr std::string_view OfItems =
    "Action ActionInfo Top Left Height Width ZIndex Visibility ToolTip Label DocumentMapLabel Bookmark "
    "LinkToChild "
    "RepeatWith CustomProperties DataElementName DataElementOutput Style";
constexpr std::string_view OfRegions =
    "KeepTogether NoRows NoRowsMessage DataSetName PageBreak PageName PageBreakAtStart PageBreakAtEnd "
    "Filters "
    "SortExpressions ";

constexpr Order Orders[] = {
    {"Report",
     "Description Author AutoRefresh InitialPageName DataSources DataSets ReportSections Body Width Page "
     "PageHeader "
     "PageFooter PageHeight PageWidth InteractiveHeight InteractiveWidth LeftMargin RightMargin TopMargin "
     "BottomMargin "
     "ReportParameters ReportParametersLayout CustomProperties Code EmbeddedImages Language CodeModules "
     "Classes "
     "Variables DeferVariableEvaluation ConsumeContainerWhitespace DataTransform DataSchema DataElementName "
     "DataElementStyle"},
    {"ReportSection", "Body Width Page"},
    {"Body", "ReportItems Height Columns ColumnSpacing Style"},
    {"Page",
     "PageHeader PageFooter PageHeight PageWidth InteractiveHeight InteractiveWidth LeftMargin RightMargin "
     "TopMargin "
     "BottomMargin Columns ColumnSpacing Style"},
    {"PageHeader PageFooter", "Height PrintOnFirstPage PrintOnLastPage ReportItems Style"},
    {"DataSource", "Transaction ConnectionProperties DataSourceReference"},
    {"ConnectionProperties", "DataProvider ConnectString IntegratedSecurity Prompt"},
    {"DataSet",
     "SharedDataSet Query Fields Rows CaseSensitivity Collation AccentSensitivity KanatypeSensitivity "
     "WidthSensitivity "
     "Filters InterpretSubtotalsAsDetails"},
    {"SharedDataSet", "SharedDataSetReference QueryParameters"},
    {"Query", "DataSourceName QueryParameters CommandType CommandText Timeout"},
    {"Field", "DataField Value"},
    {"Filter", "FilterExpression Operator FilterValues"},
    {"SortExpression", "Value Direction"},
    {"SortBy", "SortExpression Direction"},
    {"ReportParameter",
     "DataType Nullable DefaultValue AllowBlank Prompt ValidValues Hidden MultiValue UsedInQuery"},
    {"DefaultValue", "DataSetReference Values"},
    {"ValidValues", "DataSetReference ParameterValues"},
    {"DataSetReference", "DataSetName ValueField LabelField"},
    {"ParameterValue", "Value Label"},
    {"CustomProperty", "Name Value"},
    {"EmbeddedImage", "MIMEType ImageData"},
    {"Class", "ClassName InstanceName"},
    {"Action", "Hyperlink Drillthrough BookmarkLink"},
    {"Visibility", "Hidden ToggleItem"},
    {"PageBreak", "BreakLocation Disabled ResetPageNumber"},
    {"Textbox",
     "CanGrow CanShrink KeepTogether HideDuplicates ToggleImage UserSort Paragraphs Value DataElementStyle",
     true},
    {"Paragraph",
     "TextRuns Style LeftIndent RightIndent HangingIndent ListStyle ListLevel SpaceBefore SpaceAfter"},
    {"TextRun", "Label Value ActionInfo ToolTip MarkupType Style"},
    {"Line", "", true},
    {"Rectangle",
     "ReportItems PageBreak PageName PageBreakAtStart PageBreakAtEnd KeepTogether OmitBorderOnPageBreak",
     true},
    {"Image", "Source Value MIMEType Sizing", true},
    {"Subreport",
     "ReportName Parameters NoRows NoRowsMessage MergeTransactions KeepTogether OmitBorderOnPageBreak", true},
    {"Parameter", "Value Omit"},
    {"Tablix",
     "TablixCorner TablixBody TablixColumnHierarchy TablixRowHierarchy LayoutDirection "
     "GroupsBeforeRowHeaders "
     "RepeatColumnHeaders RepeatRowHeaders FixedColumnHeaders FixedRowHeaders OmitBorderOnPageBreak",
     true},
    {"TablixBody", "TablixColumns TablixRows"},
    {"TablixRow", "Height TablixCells"},
    {"TablixCell", "CellContents"},
    {"TablixHeader", "Size CellContents"},
    {"CellContents",
     "Textbox Rectangle Line Image Tablix Subreport Chart GaugePanel Map CustomReportItem ColSpan RowSpan"},
    {"TablixMember",
     "Group SortExpressions TablixHeader TablixMembers CustomProperties FixedData Visibility HideIfNoRows "
     "KeepWithGroup "
     "RepeatOnNewPage DataElementName DataElementOutput KeepTogether"},
    {"Group",
     "DocumentMapLabel GroupExpressions PageBreak PageName Filters Parent ReGroupExpressions DataElementName "
     "DataElementOutput Variables"},
    {"Grouping",
     "Label GroupExpressions PageBreakAtStart PageBreakAtEnd CustomProperties Filters Parent DataElementName "
     "DataCollectionName DataElementOutput"},
    {"List", "Grouping Sorting ReportItems FillPage DataInstanceName DataInstanceElementOutput", true},
    {"Table",
     "TableColumns Header TableGroups Details Footer FillPage DetailDataElementName DetailDataCollectionName "
     "DetailDataElementOutput",
     true},
    {"TableColumn", "Width Visibility FixedHeader"},
    {"TableGroup", "Grouping Sorting Header Footer Visibility"},
    {"Header", "TableRows FixedHeader RepeatOnNewPage"},
    {"Footer", "TableRows RepeatOnNewPage"},
    {"Details", "TableRows Grouping Sorting Visibility"},
    {"TableRow", "TableCells Height Visibility"},
    {"TableCell", "ReportItems ColSpan"},
    {"Matrix",
     "Corner ColumnGroupings RowGroupings MatrixRows MatrixColumns LayoutDirection GroupsBeforeRowHeaders "
     "CellDataElementName CellDataElementOutput",
     true},
    {"ColumnGrouping", "Height DynamicColumns StaticColumns FixedHeader"},
    {"RowGrouping", "Width DynamicRows StaticRows FixedHeader"},
    {"DynamicColumns DynamicRows", "Grouping Sorting Subtotal ReportItems Visibility"},
    {"MatrixRow", "Height MatrixCells"},
    {"Chart",
     "ChartCategoryHierarchy ChartSeriesHierarchy ChartData ChartAreas ChartLegends ChartTitles Palette "
     "ChartCustomPaletteColors PaletteHatchBehavior DynamicHeight DynamicWidth ChartBorderSkin "
     "ChartNoDataMessage Type "
     "Subtype SeriesGroupings CategoryGroupings Legend CategoryAxis ValueAxis Title PointWidth "
     "ThreeDProperties PlotArea",
     true},
    {"ChartSeries",
     "Hidden ChartDataPoints Type Subtype Style ChartEmptyPoints LegendName LegendText ChartAreaName "
     "ValueAxisName "
     "CategoryAxisName CustomProperties ChartDataLabel ChartMarker ChartItemInLegend ChartSmartLabel "
     "ToolTip"},
    {"ChartDataPoint",
     "ChartDataPointValues ChartDataLabel AxisLabel ToolTip ActionInfo Style ChartMarker ChartItemInLegend"},
    {"ChartAxis",
     "Visible Style ChartAxisTitle Margin Interval ChartMajorGridLines ChartMinorGridLines "
     "ChartMajorTickMarks "
     "ChartMinorTickMarks Reverse CrossAt Location Interlaced InterlacedColor LogScale LogBase HideLabels "
     "Angle Minimum "
     "Maximum IncludeZero"},
    {"UserSort", "SortExpression SortExpressionScope SortTarget"},
    {"GaugePanel",
     "GaugeMember LinearGauges RadialGauges NumericIndicators StateIndicators GaugeImages GaugeLabels "
     "AntiAliasing "
     "TextAntiAliasingQuality ShadowIntensity BackFrame TopImage AutoLayout",
     true},
    {"CustomReportItem", "Type AltReportItem CustomData", true},
    {"Style",
     "Border TopBorder BottomBorder LeftBorder RightBorder BorderColor BorderStyle BorderWidth "
     "BackgroundColor "
     "BackgroundGradientType BackgroundGradientEndColor BackgroundImage FontStyle FontFamily FontSize "
     "FontWeight Format "
     "TextDecoration TextAlign VerticalAlign Color PaddingLeft PaddingRight PaddingTop PaddingBottom "
     "LineHeight "
     "Direction WritingMode Language UnicodeBiDi Calendar NumeralLanguage NumeralVariant"},
    {"Border TopBorder BottomBorder LeftBorder RightBorder", "Color Style Width"},
    {"BorderColor BorderStyle BorderWidth", "Default Left Right Top Bottom"},
    {"BackgroundImage", "Source Value MIMEType BackgroundRepeat TransparentColor Position"},
};

// Regions have further children before those of every item.
constexpr std::string_view Regions[] = {"Tablix", "List",       "Table", "Matrix",
                                        "Chart",  "GaugePanel", "Map",   "CustomReportItem"};

constexpr std::string_view Collections[] = {
    "ReportItems",      "DataSources",
    "DataSets",         "Fields",
    "QueryParameters",  "Filters",
    "FilterValues",     "SortExpressions",
    "Sorting",          "ReportParameters",
    "ParameterValues",  "Values",
    "ValidValues",      "DefaultValue",
    "CustomProperties", "EmbeddedImages",
    "CodeModules",      "Classes",
    "Variables",        "Actions",
    "ActionInfo",       "Parameters",
    "GroupExpressions", "TableGroups",
    "TablixCorner",     "TablixCornerRows",
    "Visibility",       "PageBreak",
    "Border",           "TopBorder",
    "BottomBorder",     "LeftBorder",
    "RightBorder",      "BorderColor",
    "BorderStyle",      "BorderWidth",
    "BackgroundImage",  "Style",
    "ChartTitles",      "ChartLegends",
    "UserSort",         "RadialGauges",
    "LinearGauges",     "StateIndicators",
    "ScaleRanges",
};

using Places = std::unordered_map<std::string_view, int>;

template <typename Take>
void ForEachWord(std::string_view words, Take take) {
    while (!words.empty()) {
        const std::size_t blank = std::min(words.find(' '), words.size());
        if (blank > 0) {
            take(words.substr(0, blank));
        }
        words.remove_prefix(std::min(blank + 1, words.size()));
    }
}

Places PlacesOf(const Order& order, std::string_view parent) {
    Places places;
    const auto add = [&places](std::string_view words) {
        ForEachWord(words, [&places](std::string_view word) {
            places.emplace(word, static_cast<int>(places.size()));
        });
    };
    add(order.children);
    if (std::find(std::begin(Regions), std::end(Regions), parent) != std::end(Regions)) {
        add(OfRegions);
    }
    if (order.isItem) {
        add(OfItems);
    }
    return places;
}

const std::unordered_map<std::string_view, Places>& AllPlaces() {
    static const auto all = [] {
        std::unordered_map<std::string_view, Places> made;
        for (const Order& order : Orders) {
            ForEachWord(order.parents,
                        [&](std::string_view parent) { made.emplace(parent, PlacesOf(order, parent)); });
        }
        return made;
    }();
    return all;
}

}  // namespace

int PlaceInOrder(std::string_view parent, std::string_view child) {
    const auto places = AllPlaces().find(parent);
    if (places == AllPlaces().end()) {
        return -1;
    }
    const auto place = places->second.find(child);
    return place == places->second.end() ? -1 : place->second;
}

bool IsCollection(std::string_view name) {
    return std::find(std::begin(Collections), std::end(Collections), name) != std::end(Collections);
}

}  // namespace designer
