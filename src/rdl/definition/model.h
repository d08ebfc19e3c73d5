// SPDX-License-Identifier: GPL-3.0-or-later
// A report's definition as read (MS-RDL): no data, nothing evaluated. Older forms are converted: List, Table
// and Matrix to Tablix, a Textbox's Value to one paragraph with one run, Grouping to Group; margins and page
// sizes are always in Page. Lengths are points (1/72 inch). The structs own their parts.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rdl/api/query_kinds.h"

namespace rdl {

class InlineRows;
class Spool;

// A property that may be a constant or an expression.
struct Expr {
    std::string source;  // starts with = for an expression; constants as written
    std::string where;   // for errors: "Textbox Total, Value"
    int line = 0;        // line of the file, for errors
    int id = -1;         // expressions only: from 0 in document order, unique within the report
    bool IsSet() const { return !source.empty(); }
    bool IsExpression() const { return id >= 0; }
};

enum class StyleProperty : unsigned char {
    BackgroundColor,
    BackgroundGradientType,
    BackgroundGradientEndColor,
    BackgroundImageSource,  // Embedded, External or Database
    BackgroundImageValue,
    BackgroundImageType,  // its MIME type
    BackgroundRepeat,
    BackgroundPosition,
    BorderColor,
    BorderColorLeft,
    BorderColorRight,
    BorderColorTop,
    BorderColorBottom,
    BorderStyle,
    BorderStyleLeft,
    BorderStyleRight,
    BorderStyleTop,
    BorderStyleBottom,
    BorderWidth,
    BorderWidthLeft,
    BorderWidthRight,
    BorderWidthTop,
    BorderWidthBottom,
    Color,
    Direction,
    FontFamily,
    FontSize,
    FontStyle,
    FontWeight,
    Format,
    Language,
    LineHeight,
    NumeralLanguage,
    NumeralVariant,
    Calendar,
    PaddingLeft,
    PaddingRight,
    PaddingTop,
    PaddingBottom,
    TextAlign,
    TextDecoration,
    UnicodeBiDi,
    VerticalAlign,
    WritingMode,
};

// Only what the report sets; the layout applies the defaults.
struct Style {
    std::vector<std::pair<StyleProperty, Expr>> properties;
    const Expr* Find(StyleProperty property) const {
        for (const auto& [name, value] : properties) {
            if (name == property) {
                return &value;
            }
        }
        return nullptr;
    }
};

struct Visibility {
    Expr hidden;             // not set: visible
    std::string toggleItem;  // always drawn in its initial state
};

struct Action {
    Expr hyperlink;
    Expr bookmarkLink;
};

struct PageBreak {
    enum class Location { None, Start, End, StartAndEnd, Between } location = Location::None;
    Expr disabled;
    Expr resetPageNumber;
    Expr pageName;
    bool AtStart() const { return location == Location::Start || location == Location::StartAndEnd; }
    bool AtEnd() const { return location == Location::End || location == Location::StartAndEnd; }
};

struct Filter {
    Expr expression;
    std::string
        op;  // Equal, Like, NotEqual, GreaterThan, ..., TopN, BottomN, TopPercent, BottomPercent, In, Between
    std::vector<Expr> values;
};

struct Sort {
    Expr value;
    bool descending = false;
};

struct Variable {
    std::string name;
    Expr value;
};

struct Group {
    std::string name;
    std::vector<Expr> expressions;  // empty: a detail group with one instance for each row
    std::vector<Filter> filters;
    std::vector<Variable> variables;
    Expr parent;  // for recursive hierarchies
    Expr documentMapLabel;
    PageBreak pageBreak;
};

enum class ItemKind { Textbox, Line, Rectangle, Image, Tablix, Subreport, Chart, Gauge, Barcode, Map };

struct ReportItem {
    explicit ReportItem(ItemKind k) : kind(k) {}
    virtual ~ReportItem() = default;
    ItemKind kind;
    std::string name;
    std::string place;  // for errors, with the element name of the file: "List Orders"
    int line = 0;
    double left = 0, top = 0, width = 0, height = 0;  // a Line's width and height may be negative
    int zIndex = 0;
    Style style;
    Visibility visibility;
    Action action;
    Expr toolTip, bookmark, documentMapLabel;
    std::string repeatWith;
    PageBreak pageBreak;
    // For formats that carry data without a look. Auto: a text box unless its text is a constant.
    enum class DataOutput { Auto, Output, NoOutput } dataOutput = DataOutput::Auto;
    std::string dataName;  // empty: the item's name
};
using ItemPtr = std::unique_ptr<ReportItem>;

struct TextRun {
    Expr value;
    Style style;
    Action action;
    Expr toolTip;
    bool html = false;  // MarkupType HTML
};

struct Paragraph {
    Style style;
    std::vector<TextRun> runs;
    Expr leftIndent, rightIndent, hangingIndent, spaceBefore, spaceAfter;
    enum class List { None, Bulleted, Numbered } listStyle = List::None;
    int listLevel = 0;
};

struct Textbox : ReportItem {
    Textbox() : ReportItem(ItemKind::Textbox) {}
    std::vector<Paragraph> paragraphs;
    bool canGrow = false, canShrink = false;
    bool keepTogether = false;
    std::string hideDuplicates;  // a scope's name
};

struct Line : ReportItem {
    Line() : ReportItem(ItemKind::Line) {}
};

struct Rectangle : ReportItem {
    Rectangle() : ReportItem(ItemKind::Rectangle) {}
    std::vector<ItemPtr> items;
    bool keepTogether = false, omitBorderOnPageBreak = false;
};

struct Image : ReportItem {
    Image() : ReportItem(ItemKind::Image) {}
    enum class Source { External, Embedded, Database } source = Source::External;
    enum class Sizing { AutoSize, Fit, FitProportional, Clip } sizing = Sizing::AutoSize;
    Expr value;  // path, name of an embedded image, or bytes (Database)
    Expr mimeType;
};

struct Subreport : ReportItem {
    Subreport() : ReportItem(ItemKind::Subreport) {}
    std::string reportName;
    std::vector<std::pair<std::string, Expr>> parameters;
    Expr noRows;
    bool mergeTransactions = false, keepTogether = false, omitBorderOnPageBreak = false;
};

struct TablixMember {
    std::optional<Group> group;
    std::vector<Sort> sorts;
    double headerSize = 0;  // width (row hierarchy) or height (column hierarchy) of the header cell
    ItemPtr header;         // null: no header cell
    int headerColSpan = 1, headerRowSpan = 1;
    std::vector<TablixMember> members;  // empty: a leaf, one body row or column
    Visibility visibility;
    enum class KeepWithGroup { None, Before, After } keepWithGroup = KeepWithGroup::None;
    bool repeatOnNewPage = false, hideIfNoRows = false, keepTogether = false, fixedData = false;
};

struct TablixCell {
    ItemPtr item;  // null in a cell that is empty or covered by a span
    int colSpan = 1, rowSpan = 1;
};

struct TablixRow {
    double height = 0;
    std::vector<TablixCell> cells;  // one for each column, including covered ones
};

struct Tablix : ReportItem {
    Tablix() : ReportItem(ItemKind::Tablix) {}
    std::string dataSetName;  // empty: that of the enclosing region, or the report's only data set
    std::vector<std::vector<TablixCell>> corner;  // rows of cells
    std::vector<double> columnWidths;
    std::vector<TablixRow> rows;
    std::vector<TablixMember> columnMembers, rowMembers;
    std::vector<Filter> filters;
    std::vector<Sort> sorts;
    Expr noRowsMessage;
    bool repeatColumnHeaders = false, repeatRowHeaders = false, keepTogether = false;
    bool omitBorderOnPageBreak = false, rightToLeft = false;
    int groupsBeforeRowHeaders = 0;
};

struct PageSection {  // page header or footer
    double height = 0;
    bool printOnFirstPage = false, printOnLastPage = false;
    std::vector<ItemPtr> items;
    Style style;
};

struct Page {
    double width = 612, height = 792;  // the default of the schema: 8.5 by 11 inches
    double marginLeft = 0, marginRight = 0, marginTop = 0, marginBottom = 0;
    int columns = 1;
    double columnSpacing = 0;
    std::optional<PageSection> header, footer;
    Style style;
};

struct Section {       // files before 2010 have one
    double width = 0;  // of the body
    double bodyHeight = 0;
    std::vector<ItemPtr> items;
    Style bodyStyle;
    Page page;
};

enum class ParameterType { Boolean, DateTime, Integer, Float, String };

struct ParameterValueDef {
    Expr value, label;
};

struct DataSetReference {  // values from a query
    std::string dataSet, valueField, labelField;
};

struct ReportParameter {
    std::string name;
    ParameterType type = ParameterType::String;
    bool nullable = false, allowBlank = false, multiValue = false, hidden = false;
    Expr prompt;
    std::vector<Expr> defaultValues;
    std::vector<bool> defaultIsNull;  // parallel to defaultValues: Null instead of an empty text
    std::optional<DataSetReference> defaultQuery, validQuery;
    std::vector<ParameterValueDef> validValues;
};

struct DataSource {
    std::string name;
    std::string provider;  // SQL, SQLITE, ODBC, ENTERDATA, ... as written
    Expr connectString;
    std::string reference;  // name of a shared data source
    bool integratedSecurity = false;
};

struct Field {
    std::string name;
    std::string dataField;  // column of the query; empty for a calculated field
    Expr value;             // calculated field
    std::string typeName;   // System.Int32 ...; may be empty
};

struct QueryParameter {
    std::string name;
    Expr value;
};

struct DataSet {
    std::string name;
    std::string dataSourceName;
    std::string sharedDataSet;           // .rsd
    Expr commandText;                    // not set if the text is long and holds rows
    std::shared_ptr<Spool> longCommand;  // is then that text, else null
    QueryKind commandType = QueryKind::Text;
    std::vector<QueryParameter> parameters;
    int timeoutSeconds = 0;
    std::vector<Field> fields;
    std::vector<Filter> filters;
    bool caseSensitive = false;
    std::shared_ptr<InlineRows> inlineRows;  // if the report contains its data, else null
    bool HasCommand() const { return commandText.IsSet() || longCommand; }
    std::string rowsFile;  // XML file with the rows, as the report names it; may be empty
};

struct EmbeddedImage {
    std::string name, mimeType;
    std::string bytes;  // decoded
};

struct Definition {
    std::string fileName;                       // without its folder, for errors
    std::string description, author, language;  // `language` may be the source of languageExpr
    Expr languageExpr;
    std::optional<std::string> title;    // custom property Title as one line; may be empty
    std::string recordSelectionFormula;  // custom property RecordSelectionFormula
    std::string code;                    // report-level functions
    // Custom assemblies and their classes, with commas between them; they are never loaded.
    std::string assemblies;
    std::vector<DataSource> dataSources;
    std::vector<DataSet> dataSets;
    std::vector<ReportParameter> parameters;
    std::vector<Section> sections;
    std::vector<EmbeddedImage> images;
    std::vector<Variable> variables;
    std::vector<std::string> fonts;  // families that are constants, each once, in order
    Expr initialPageName;
    bool consumeContainerWhitespace = false;
    int expressionCount = 0;  // Expr::id is below this
    const DataSet* FindDataSet(const std::string& name) const {
        for (const DataSet& set : dataSets) {
            if (set.name == name) {
                return &set;
            }
        }
        return nullptr;
    }
};

}  // namespace rdl
