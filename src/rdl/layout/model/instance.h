// SPDX-License-Identifier: GPL-3.0-or-later
// A report with its data: instances of items in document order, without pages. Pagination and the flowing
// formats (RTF, Word, HTML, CSV, workbooks) both read it. Table rows are built one at a time, so memory does
// not grow with their number. Lengths are points.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/layout/model/style.h"
#include "rdl/values/run_watch.h"
#include "rdl/values/value.h"

namespace rdl::layout {

// Placeholders for page numbers in texts: private-use characters, replaced once pages are known.
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
    float lineHeight = 0;  // 0: that of the font
    int listLevel = 0;
    int listNumber = 0;  // number in a numbered list, from 1; 0: none
    bool bulleted = false;
};

enum class InstanceKind { Text, Image, Line, Container, Table, Drawing };

struct TableInstance;
struct DrawingInstance;  // a chart or gauge as a vector drawing: drawing.h

// Marks a text that is the same in every cell of a region that has no rows, so that nobody needs to make, lay
// out or write it again: texts with equal marks differ in their places and sizes only. What is moved away
// leaves no mark.
class SameText {
 public:
    SameText() = default;  // the text of one cell alone
    SameText(std::uint32_t region, const void* item) : m_region(region), m_item(item) {}
    SameText(const SameText&) = default;
    SameText& operator=(const SameText&) = default;
    SameText(SameText&& other) noexcept
        : m_region(other.m_region), m_item(std::exchange(other.m_item, nullptr)) {}
    SameText& operator=(SameText&& other) noexcept {
        m_region = other.m_region;
        m_item = std::exchange(other.m_item, nullptr);
        return *this;
    }
    ~SameText() = default;
    bool IsSet() const { return m_item != nullptr; }
    bool IsSameAs(const SameText& other) const {
        return m_item != nullptr && m_item == other.m_item && m_region == other.m_region;
    }

 private:
    std::uint32_t m_region = 0;
    const void* m_item = nullptr;
};

// One item, ready to be drawn. x and y are relative to the container; height is as defined (a text box that
// can grow gets the height of its text when measured).
struct Instance {
    InstanceKind kind = InstanceKind::Text;
    double x = 0, y = 0, width = 0, height = 0;
    BoxStylePtr box;
    std::string name;  // name of the item, for errors and anchors
    std::string hyperlink, bookmark, bookmarkLink, documentMapLabel, toolTip;
    // For formats that carry data without a look: title of a text's column, empty if it has none; whether
    // another item is left out with all that is in it.
    std::string column;
    bool noOutput = false;

    // Text
    std::vector<ParagraphInstance> paragraphs;
    Value value;           // typed value of a box with a single run, for Excel; else Null
    std::string format;    // the run's format string
    std::string language;  // the culture of its format
    bool canGrow = false, canShrink = false;
    bool isNumeric = false;  // General alignment means right
    SameText same;

    // Image
    std::shared_ptr<const std::string> imageBytes;  // PNG, JPEG, GIF or BMP as stored
    std::string mimeType;
    enum class Sizing { AutoSize, Fit, FitProportional, Clip } sizing = Sizing::Fit;

    // Line: from (x, y) to (x + width, y + height), drawn with box->top; height may be negative.

    // Container: a Rectangle
    std::vector<Instance> children;
    bool keepTogether = false;
    bool breakBefore = false, breakAfter = false;
    bool resetPageNumber = false;  // at those breaks
    std::string pageName;          // name of the page on which it begins
    std::string repeatWith;        // the sibling table that repeats it on its further pages
    bool omitBorder = false;       // omit the border where a page break splits it
    bool consumeSpace = false;     // space below its last child is not kept when children grow
    int layer = 0;                 // z-order among siblings, higher is above

    // Table
    std::shared_ptr<TableInstance> table;
    // Drawing
    std::shared_ptr<const DrawingInstance> drawing;

    std::string PlainText() const;  // paragraphs joined by line feeds
};

struct TableCell {
    int column = 0, columnSpan = 1, rowSpan = 1;
    Instance content;  // x = y = 0; as large as the cell
};

// An entry of the document map.
struct MapLabel {
    std::string text;  // not empty
    int level = 0;     // depth of its group, 0 is outermost
};

struct TableRow {
    double height = 0;  // as defined
    bool canGrow = true;
    std::vector<TableCell> cells;                   // covered positions have no entry
    bool columnHeader = false;                      // a row of the column hierarchy or a repeating static row
    bool groupHeader = false, groupFooter = false;  // a static row before or after a group's instances
    bool breakBefore = false, breakAfter = false;
    bool keepWithNext = false, keepWithPrevious = false;
    bool resetPageNumber = false;
    std::string pageName;          // set in its first row; names the sheet or page
    std::vector<MapLabel> labels;  // of the groups that begin with it, outermost first
};

// A column of a table in formats that carry data without a look.
struct DataColumn {
    std::string item;  // the text box; a key
    std::string title;
};

// Columns of a table: the first `headers` ones, then those from `first` to `end`.
struct TableColumns {
    std::size_t headers = 0, first = 0, end = 0;
};

// The rows of a Tablix.
struct TableInstance {
    virtual ~TableInstance() = default;
    std::vector<double> columnWidths;  // row header columns first; dynamic columns are expanded
    int headerColumns = 0;  // number of row header columns, repeated when columns continue on further pages
    bool rightToLeft = false;
    bool repeatColumnHeaders = false;
    bool repeatRowHeaders = false;  // on pages to the right
    bool keepTogether = false;
    bool hidesDuplicates = false;  // RowOnTop may show values that Row hides
    std::string noRowsMessage;     // shown instead of rows; else empty
    CharStylePtr noRowsStyle;
    virtual std::size_t RowCount() const = 0;
    // Builds row `index`, from 0, into `row`. Rows may be requested in any order; ascending is fastest. May
    // raise rdl::Error.
    virtual void Row(std::size_t index, TableRow& row) = 0;
    // The same without cells that lie outside of the columns, where that does not change the other cells. A
    // table with thousands of columns is written some columns at a time.
    virtual void RowWithin(std::size_t index, const TableColumns& /*columns*/, TableRow& row) {
        Row(index, row);
    }
    // The same for the first row of a page: values equal to the previous row's are shown.
    virtual void RowOnTop(std::size_t index, TableRow& row) { Row(index, row); }
    // Returns the rows to repeat at the top of a page that begins with row `index` (headers of the table and
    // of continuing groups), outermost first.
    virtual std::vector<std::size_t> RepeatedRows(std::size_t index) = 0;
    // Returns the instances of the row groups around row `index`, outermost first; equal numbers are the same
    // instance.
    virtual std::vector<std::uint64_t> GroupsAround(std::size_t /*index*/) const { return {}; }
    // Returns the columns of the text boxes in the table, in the order in which the report defines them.
    virtual std::vector<DataColumn> DataColumns() const { return {}; }
    // Whether the cells hold nothing but texts and pictures and no row is a total of a group. Then each
    // record of data is known as soon as its row is.
    virtual bool IsFlat() const { return false; }
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

// One body of the report with its page setup.
struct SectionInstance {
    virtual ~SectionInstance() = default;
    PageSetup page;
    double bodyWidth = 0, bodyHeight = 0;
    BoxStylePtr bodyStyle;
    std::vector<Instance> items;  // items of the body, sorted by y, then x
    // The header or footer of one page, with page numbers in place of the placeholders. Flowing formats
    // request it once with page 0 and keep the placeholders.
    struct PageFacts {
        int number = 0, total = 0, overallNumber = 0, overallTotal = 0;
        std::string name;
        // Text boxes on the page by name and in order, for ReportItems in header and footer.
        std::vector<std::pair<std::string, Value>> reportItems;
    };
    virtual std::vector<Instance> Header(const PageFacts& page) = 0;
    virtual std::vector<Instance> Footer(const PageFacts& page) = 0;
    // Text boxes that header or footer refer to by ReportItems; the paginator collects them.
    std::vector<std::string> wantedReportItems;
    // Header or footer depend on the number of pages.
    bool usesTotalPages = false;
    // The body depends on the number of pages: pages are counted before they are delivered.
    bool bodyUsesTotalPages = false;
};

struct ReportInstance {
    virtual ~ReportInstance() = default;
    std::string title, author, description, language;
    std::shared_ptr<RunWatch>
        watch;             // limits of the run, which lasts while rows and pages are built; may be null
    std::string pageName;  // name of the first page, until another name begins
    bool hasRows = true;   // whether any data set has rows; true also without data sets
    std::vector<std::unique_ptr<SectionInstance>> sections;
};

}  // namespace rdl::layout
