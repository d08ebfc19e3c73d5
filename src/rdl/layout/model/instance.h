// What a report comes to once its data is in: instances of items, in the order of the document and without
// pages. Pagination and the flowing formats (RTF, Word, HTML, Excel) both read this. Rows of a data region
// are made one at a time, so memory does not grow with their number.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "rdl/layout/model/style.h"
#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl::layout {

// Page numbers are not known before pages are: inside texts they stand as these characters.
inline constexpr const char* PageNumberMark = "\xEE\x80\x80";         // U+E000
inline constexpr const char* TotalPagesMark = "\xEE\x80\x81";         // U+E001
inline constexpr const char* OverallPageNumberMark = "\xEE\x80\x82";  // U+E002
inline constexpr const char* OverallTotalPagesMark = "\xEE\x80\x83";  // U+E003

struct RunInstance {
    std::string text;  // formatted
    CharStylePtr style;
    std::string hyperlink;
};

struct ParagraphInstance {
    std::vector<RunInstance> runs;
    HAlign align = HAlign::General;
    float leftIndent = 0, rightIndent = 0, hangingIndent = 0, spaceBefore = 0, spaceAfter = 0;
    float lineHeight = 0;  // 0: the font's
    int listLevel = 0;
    int listNumber = 0;  // numbered lists: 1 ...; 0: none
    bool bulleted = false;
};

enum class InstanceKind { Text, Image, Line, Container, Table, Drawing };

struct TableInstance;
struct DrawingInstance;  // a chart or gauge as vector drawing: drawing.h

// One item, ready to be drawn. x, y, width and height are points, relative to the container; height is as
// defined (a text box that can grow becomes what its text needs when it is measured).
struct Instance {
    InstanceKind kind = InstanceKind::Text;
    double x = 0, y = 0, width = 0, height = 0;
    BoxStylePtr box;
    std::string name;  // the item's, for errors and for named anchors
    std::string hyperlink, bookmark, bookmarkLink, documentMapLabel, toolTip;

    // Text
    std::vector<ParagraphInstance> paragraphs;
    Value value;           // of a box with a single run: typed, for Excel; Null otherwise
    std::string format;    // the run's format string
    std::string language;  // the culture it was formatted by
    bool canGrow = false, canShrink = false;
    bool isNumeric = false;  // General alignment goes right

    // Image
    std::shared_ptr<const std::string> imageBytes;  // PNG, JPEG, GIF or BMP as it was stored
    std::string mimeType;
    enum class Sizing { AutoSize, Fit, FitProportional, Clip } sizing = Sizing::Fit;

    // Line: from (x, y) to (x + width, y + height), drawn with box->top; height may be negative.

    // Container: a Rectangle
    std::vector<Instance> children;
    bool keepTogether = false;
    bool breakBefore = false, breakAfter = false;
    bool resetPageNumber = false;  // at those breaks
    std::string pageName;          // of the page that it begins on
    std::string repeatWith;        // the table beside it that takes it along to its further pages
    bool omitBorder = false;       // where a page ends within it
    bool consumeSpace = false;     // room below its last child is not kept when children grow
    int layer = 0;                 // among its siblings: higher ones lie above lower ones

    // Table
    std::shared_ptr<TableInstance> table;
    // Drawing
    std::shared_ptr<const DrawingInstance> drawing;

    std::string PlainText() const;  // paragraphs joined by a line feed
};

struct TableCell {
    int column = 0, columnSpan = 1, rowSpan = 1;
    Instance content;  // x = y = 0; fills the cell
};

struct TableRow {
    double height = 0;  // as defined
    bool canGrow = true;
    std::vector<TableCell> cells;                   // covered places have none
    bool columnHeader = false;                      // of the column hierarchy or a static row that repeats
    bool groupHeader = false, groupFooter = false;  // a static row before or behind a group's instances
    bool breakBefore = false, breakAfter = false;
    bool keepWithNext = false, keepWithPrevious = false;
    bool resetPageNumber = false;
    std::string pageName;  // set where it begins; names the sheet, page
    int level = 0;         // depth of the row's group, 0 outermost
    std::string documentMapLabel;
};

// The rows of a Tablix.
struct TableInstance {
    virtual ~TableInstance() = default;
    std::vector<double> columnWidths;  // row header columns first; dynamic columns expanded
    int headerColumns = 0;             // columns of the row headers; repeated when columns break over pages
    bool rightToLeft = false;
    bool repeatColumnHeaders = false;
    bool repeatRowHeaders = false;  // on the pages to the right
    bool keepTogether = false;
    bool hidesDuplicates = false;  // RowOnTop may say more than Row
    std::string noRowsMessage;     // set when there are no rows to show and a message instead
    CharStylePtr noRowsStyle;
    virtual std::size_t RowCount() const = 0;
    // Row from 0, made anew into `row`. Rows may be asked for in any order; forward is fastest.
    virtual void Row(std::size_t index, TableRow& row) = 0;
    // The same at the top of a page, where a value stands even if the row before it says the same.
    virtual void RowOnTop(std::size_t index, TableRow& row) { Row(index, row); }
    // Rows to draw again at the top of a page that begins with row `index` (headers of the table and of the
    // groups that go on), outermost first.
    virtual std::vector<std::size_t> RepeatedRows(std::size_t index) = 0;
};

struct PageSetup {
    double width = 612, height = 792;
    double marginLeft = 0, marginRight = 0, marginTop = 0, marginBottom = 0;
    int columns = 1;
    double columnSpacing = 0;
    double headerHeight = 0, footerHeight = 0;
    bool headerOnFirst = true, headerOnLast = true, footerOnFirst = true, footerOnLast = true;
    BoxStylePtr style, headerStyle, footerStyle;
};

// One body of the report with its pages' setup.
struct SectionInstance {
    virtual ~SectionInstance() = default;
    PageSetup page;
    double bodyWidth = 0, bodyHeight = 0;
    BoxStylePtr bodyStyle;
    std::vector<Instance> items;  // of the body, by y then x
    // Header and footer for one page, null marks resolved to numbers. For flowing formats they are asked for
    // once with page 0, and page numbers stand as marks.
    struct PageFacts {
        int number = 0, total = 0, overallNumber = 0, overallTotal = 0;
        std::string name;
        // Text boxes seen on the page, by name, for ReportItems in header and footer, in their order.
        std::vector<std::pair<std::string, Value>> reportItems;
    };
    virtual std::vector<Instance> Header(const PageFacts& page) = 0;
    virtual std::vector<Instance> Footer(const PageFacts& page) = 0;
    // Names of text boxes that header or footer ask for by ReportItems; the paginator notes them.
    std::vector<std::string> wantedReportItems;
    // What header and footer say depends on the number of pages.
    bool usesTotalPages = false;
    // Likewise the body: its pages are counted before they are given out.
    bool bodyUsesTotalPages = false;
};

struct ReportInstance {
    virtual ~ReportInstance() = default;
    std::string title, author, description, language;
    std::shared_ptr<RunWatch> watch;  // of the run that goes on while rows and pages are made; may be null
    std::string pageName;             // of the first page, until another name begins
    bool hasRows = true;  // of data, in any of its data sets; true as well when it has no data sets
    std::vector<std::unique_ptr<SectionInstance>> sections;
};

}  // namespace rdl::layout
