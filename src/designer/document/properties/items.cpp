// SPDX-License-Identifier: GPL-3.0-or-later
// Of the report, its pages and its items.
#include "designer/document/properties/property_table.h"

namespace designer {
namespace {

using enum PropertyKind;
constexpr auto Allowed = Expressions::Allowed;
constexpr auto Only = Expressions::Only;
constexpr auto No = Expressions::No;

constexpr std::string_view Outputs = "Auto Output NoOutput ContentsOnly";

constexpr Property OfReport[] = {
    {"Description", "Report", "Description", Text},
    {"Author", "Report", "Author", Text},
    {"Language", "Report", "Language", Text, Allowed},
    {"Default font", "Report", "rd:DefaultFontFamily", Font, No, "Arial"},
    {"Initial page name", "Report", "InitialPageName", Text, Allowed, "", "", "-"},
    {"Drop white space after items", "Report", "ConsumeContainerWhitespace", Boolean, No, "false", "", "-"},
    {"Code", "Report", "Code", Text},
};

constexpr Property OfOlderReport[] = {
    {"Page width", "Page", "-", Size, No, "8.5in", "", "PageWidth"},
    {"Page height", "Page", "-", Size, No, "11in", "", "PageHeight"},
    {"Left margin", "Page", "-", Size, No, "0in", "", "LeftMargin"},
    {"Right margin", "Page", "-", Size, No, "0in", "", "RightMargin"},
    {"Top margin", "Page", "-", Size, No, "0in", "", "TopMargin"},
    {"Bottom margin", "Page", "-", Size, No, "0in", "", "BottomMargin"},
    {"Columns", "Page", "-", Integer, No, "1", "", "Body/Columns"},
    {"Column spacing", "Page", "-", Size, No, "0.5in", "", "Body/ColumnSpacing"},
};

constexpr Property OfPage[] = {
    {"Page width", "Page", "PageWidth", Size, No, "8.5in"},
    {"Page height", "Page", "PageHeight", Size, No, "11in"},
    {"Left margin", "Page", "LeftMargin", Size, No, "0in"},
    {"Right margin", "Page", "RightMargin", Size, No, "0in"},
    {"Top margin", "Page", "TopMargin", Size, No, "0in"},
    {"Bottom margin", "Page", "BottomMargin", Size, No, "0in"},
    {"Columns", "Page", "Columns", Integer, No, "1"},
    {"Column spacing", "Page", "ColumnSpacing", Size, No, "0.5in"},
};

constexpr Property Width[] = {{"Width", "Position", "Width", Size}};
constexpr Property Height[] = {{"Height", "Position", "Height", Size}};

constexpr Property OfPageSections[] = {
    {"Print on first page", "Printing", "PrintOnFirstPage", Boolean, No, "false"},
    {"Print on last page", "Printing", "PrintOnLastPage", Boolean, No, "false"},
};

constexpr Property Named[] = {{"Name", "General", "@Name", Name}};

constexpr Property OfItems[] = {
    {"Left", "Position", "Left", Size, No, "0in"},
    {"Top", "Position", "Top", Size, No, "0in"},
    {"Width", "Position", "Width", Size},
    {"Height", "Position", "Height", Size},
    {"Order", "Position", "ZIndex", Integer, No, "0"},
    {"Hidden", "Visibility", "Visibility/Hidden", Boolean, Allowed, "false"},
    {"Toggled by", "Visibility", "Visibility/ToggleItem", Item},
    {"Tool tip", "Navigation", "ToolTip", Text, Allowed},
    {"Bookmark", "Navigation", "Bookmark", Text, Allowed},
    {"Document map label", "Navigation", "DocumentMapLabel", Text, Allowed, "", "", "Label"},
    {"Link address", "Navigation", "ActionInfo/Actions/Action/Hyperlink", Text, Allowed, "", "",
     "Action/Hyperlink"},
    {"Link to bookmark", "Navigation", "ActionInfo/Actions/Action/BookmarkLink", Text, Allowed, "", "",
     "Action/BookmarkLink"},
    {"Repeat with", "Printing", "RepeatWith", Item},
    {"Name in data", "Data", "DataElementName", Text},
    {"Output in data", "Data", "DataElementOutput", Words, No, "Auto", Outputs},
};

// Of rectangles and data regions.
constexpr Property OfBlocks[] = {
    {"Page break", "Printing", "PageBreak/BreakLocation", Words, No, "None",
     "None Start End StartAndEnd Between", "-"},
    {"Page break disabled", "Printing", "PageBreak/Disabled", Boolean, Allowed, "false", "", "-"},
    {"Reset page number", "Printing", "PageBreak/ResetPageNumber", Boolean, Allowed, "false", "", "-"},
    {"Page name", "Printing", "PageName", Text, Allowed, "", "", "-"},
    {"Page break before", "Printing", "-", Boolean, No, "false", "", "PageBreakAtStart"},
    {"Page break after", "Printing", "-", Boolean, No, "false", "", "PageBreakAtEnd"},
};

constexpr Property KeptTogether[] = {{"Keep together", "Printing", "KeepTogether", Boolean, No, "false"}};
constexpr Property BordersAtBreaks[] = {
    {"Omit border at page breaks", "Printing", "OmitBorderOnPageBreak", Boolean, No, "false", "", "-"}};

constexpr Property OfRegions[] = {
    {"Data set", "Data", "DataSetName", DataSet},
    {"Text without rows", "Data", "NoRowsMessage", Text, Allowed, "", "", "NoRows"},
};

constexpr Property OfTables[] = {
    {"Layout direction", "Layout", "LayoutDirection", Words, No, "LTR", "LTR RTL"},
    {"Groups before row headers", "Layout", "GroupsBeforeRowHeaders", Integer, No, "0"},
};
constexpr Property OfTablix[] = {
    {"Repeat column headers", "Printing", "RepeatColumnHeaders", Boolean, No, "false"},
    {"Repeat row headers", "Printing", "RepeatRowHeaders", Boolean, No, "false"},
};

constexpr Property OfTextboxes[] = {
    {"Value", "General", "Paragraphs/Paragraph/TextRuns/TextRun/Value", Text, Allowed, "", "", "Value"},
    {"Can grow", "Layout", "CanGrow", Boolean, No, "false"},
    {"Can shrink", "Layout", "CanShrink", Boolean, No, "false"},
    {"Hide duplicates", "Data", "HideDuplicates", Scope},
    {"Sort by", "Interactive sort", "UserSort/SortExpression", Text, Only},
    {"Sort what", "Interactive sort", "UserSort/SortTarget", Scope},
    {"Sort within", "Interactive sort", "UserSort/SortExpressionScope", Scope},
};

constexpr Property OfRuns[] = {
    {"Value", "General", "Value", Text, Allowed},
    {"Markup", "General", "MarkupType", Words, No, "None", "None HTML"},
    {"Tool tip", "Navigation", "ToolTip", Text, Allowed},
    {"Link address", "Navigation", "ActionInfo/Actions/Action/Hyperlink", Text, Allowed},
    {"Link to bookmark", "Navigation", "ActionInfo/Actions/Action/BookmarkLink", Text, Allowed},
};

constexpr Property OfParagraphs[] = {
    {"Left indent", "Paragraph", "LeftIndent", Size, Allowed, "0pt"},
    {"Right indent", "Paragraph", "RightIndent", Size, Allowed, "0pt"},
    {"Hanging indent", "Paragraph", "HangingIndent", Size, Allowed, "0pt"},
    {"Space before", "Paragraph", "SpaceBefore", Size, Allowed, "0pt"},
    {"Space after", "Paragraph", "SpaceAfter", Size, Allowed, "0pt"},
    {"List", "Paragraph", "ListStyle", Words, No, "None", "None Numbered Bulleted"},
    {"List level", "Paragraph", "ListLevel", Integer, No, "0"},
};

constexpr Property OfImages[] = {
    {"Source", "General", "Source", Words, No, "External", "External Embedded Database"},
    {"Value", "General", "Value", Image, Allowed},
    {"Picture type", "General", "MIMEType", Text, Allowed},
    {"Sizing", "Layout", "Sizing", Words, No, "AutoSize", "AutoSize Fit FitProportional Clip"},
};

constexpr Property OfSubreports[] = {
    {"Report", "General", "ReportName", Text},
    {"Text without rows", "Data", "NoRowsMessage", Text, Allowed, "", "", "NoRows"},
    {"Merge transactions", "Data", "MergeTransactions", Boolean, No, "false"},
};
constexpr Property OfParameters[] = {
    {"Name", "General", "@Name", Text},
    {"Value", "General", "Value", Text, Allowed},
};

constexpr Property OfCustomItems[] = {{"Type", "General", "Type", Text}};
constexpr Property OfCustomProperties[] = {
    {"Name", "General", "Name", Text},
    {"Value", "General", "Value", Text, Allowed},
};

constexpr Property OfBarcodes[] = {
    {"Symbology", "General", "Symbology", Text, Allowed, "Code128"},
    {"Value", "General", "Value", Text, Allowed},
    {"Show text", "General", "ShowText", Boolean, Allowed, "true"},
    {"Error correction", "General", "ErrorCorrection", Words, Allowed, "", "L M Q H"},
};

constexpr Property OfGroups[] = {
    {"Group on", "General", "GroupExpressions/GroupExpression", Text, Allowed},
    {"Parent", "General", "Parent", Text, Only},
    {"Document map label", "Navigation", "DocumentMapLabel", Text, Allowed, "", "", "Label"},
};

constexpr Property OfMembers[] = {
    {"Hidden", "Visibility", "Visibility/Hidden", Boolean, Allowed, "false"},
    {"Toggled by", "Visibility", "Visibility/ToggleItem", Item},
};
constexpr Property OfTablixMembers[] = {
    {"Keep with group", "Printing", "KeepWithGroup", Words, No, "None", "None Before After"},
    {"Repeat on new pages", "Printing", "RepeatOnNewPage", Boolean, No, "false"},
    {"Hide if there are no rows", "Visibility", "HideIfNoRows", Boolean, No, "false"},
    {"Keep together", "Printing", "KeepTogether", Boolean, No, "false"},
    {"Fixed", "Layout", "FixedData", Boolean, No, "false"},
    {"Header size", "Layout", "TablixHeader/Size", Size},
};
constexpr Property OfBands[] = {{"Repeat on new pages", "Printing", "RepeatOnNewPage", Boolean, No, "false"}};
constexpr Property OfTableColumns[] = {{"Fixed", "Layout", "FixedHeader", Boolean, No, "false"}};
constexpr Property OfCells[] = {
    {"Columns spanned", "Layout", "CellContents/ColSpan", Integer, No, "1"},
    {"Rows spanned", "Layout", "CellContents/RowSpan", Integer, No, "1"},
};
constexpr Property OfTableCells[] = {{"Columns spanned", "Layout", "ColSpan", Integer, No, "1"}};
constexpr Property OfSubtotals[] = {{"Position", "Layout", "Position", Words, No, "After", "Before After"}};

constexpr Property OfFilters[] = {
    {"Expression", "General", "FilterExpression", Text, Allowed},
    {"Operator", "General", "Operator", Words, No, "",
     "Equal Like NotEqual GreaterThan GreaterThanOrEqual LessThan LessThanOrEqual TopN BottomN TopPercent "
     "BottomPercent "
     "In Between"},
    {"Value", "General", "FilterValues/FilterValue", Text, Allowed},
};
constexpr Property OfSorts[] = {
    {"Sort by", "General", "Value", Text, Only},
    {"Direction", "General", "Direction", Words, No, "Ascending", "Ascending Descending"},
};
constexpr Property OfOlderSorts[] = {
    {"Sort by", "General", "SortExpression", Text, Only},
    {"Direction", "General", "Direction", Words, No, "Ascending", "Ascending Descending"},
};
constexpr Property OfVariables[] = {
    {"Name", "General", "@Name", Name},
    {"Value", "General", "Value", Text, Allowed},
};

constexpr PropertyGroup Groups[] = {
    {"Report", OfReport},
    {"Report", OfOlderReport},
    {"Page", OfPage},
    {"Report ReportSection TablixColumn TableColumn MatrixColumn RowGrouping", Width},
    {"Body PageHeader PageFooter TablixRow TableRow MatrixRow ColumnGrouping", Height},
    {"PageHeader PageFooter", OfPageSections},
    {"Textbox Line Rectangle Image Subreport Tablix Table Matrix List Chart GaugePanel Map CustomReportItem "
     "BarCode "
     "Group Grouping",
     Named},
    {"Textbox", OfTextboxes},
    {"Image", OfImages},
    {"Subreport", OfSubreports},
    {"CustomReportItem", OfCustomItems},
    {"BarCode", OfBarcodes},
    {"Group Grouping", OfGroups},
    {"Tablix Table Matrix List Chart GaugePanel", OfRegions},
    {"Tablix Matrix", OfTables},
    {"Tablix", OfTablix},
    {"Textbox Line Rectangle Image Subreport Tablix Table Matrix List Chart GaugePanel Map CustomReportItem "
     "BarCode",
     OfItems},
    {"Rectangle Tablix Table Matrix List Chart GaugePanel Group Grouping", OfBlocks},
    {"Textbox Rectangle Subreport Tablix Table Matrix List", KeptTogether},
    {"Rectangle Subreport Tablix", BordersAtBreaks},
    {"TextRun", OfRuns},
    {"Paragraph", OfParagraphs},
    {"Parameter", OfParameters},
    {"CustomProperty", OfCustomProperties},
    {"TablixMember TableColumn TableRow TableGroup Details DynamicColumns DynamicRows", OfMembers},
    {"TablixMember", OfTablixMembers},
    {"Header Footer", OfBands},
    {"TableColumn", OfTableColumns},
    {"TablixCell TablixHeader TablixCornerCell", OfCells},
    {"TableCell", OfTableCells},
    {"Subtotal", OfSubtotals},
    {"Filter", OfFilters},
    {"SortExpression", OfSorts},
    {"SortBy", OfOlderSorts},
    {"Variable", OfVariables},
};

}  // namespace

std::span<const PropertyGroup> ItemProperties() {
    return Groups;
}

}  // namespace designer
