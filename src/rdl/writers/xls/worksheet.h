// SPDX-License-Identifier: GPL-3.0-or-later
// A sheet under construction, of either workbook format: rows that are not complete, and what lies over the
// cells.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "rdl/layout/model/instance.h"

namespace rdl::writers {

struct XlsCell {
    enum Kind : std::uint8_t { Blank, Number, Text, Boolean } kind = Blank;
    std::uint16_t column = 0, xf = 0;
    double number = 0;       // Boolean: 0 or 1
    std::uint32_t text = 0;  // index of the text in the workbook
    bool spansRows = false;  // merged with cells of rows below: its text has more room than its row
};

struct XlsRange {
    std::uint32_t firstRow, lastRow;
    std::uint16_t firstColumn, lastColumn;
};

struct XlsPicture {
    std::uint32_t row;
    std::uint16_t column;
    double width, height;                // points
    std::size_t image;                   // index of the image in the book
    double cutRight = 0, cutBottom = 0;  // clipped fractions of the image, 0 to 1
};

struct XlsPage {
    double width = 612, height = 792;
    double marginLeft = 0, marginRight = 0, marginTop = 0, marginBottom = 0;
};

// What a sheet of the format holds.
struct XlsBounds {
    std::uint32_t rows;
    std::size_t columns;
    const char* rowsText;  // the numbers in messages
    const char* columnsText;
};

// The numbers of paper sizes, the same in both formats (MS-XLS, Setup; ECMA-376 Part 1, 18.3.1.63).
enum class XlsPaper : std::uint8_t { Letter = 1, A4 = 9 };
// Returns the paper for a page in either orientation: A4 if its long side is about as long, else Letter.
XlsPaper XlsPaperOf(const XlsPage& page);

inline constexpr double XlsTallestRow = 409, XlsDefaultRowHeight = 12.75;  // points
inline constexpr std::uint32_t XlsLastFrozenRow = 40;  // more would leave no room for what scrolls

class XlsWorksheet {
 public:
    XlsWorksheet(const XlsBounds& bounds, std::vector<double> columnWidths, const layout::PageSetup& page);
    virtual ~XlsWorksheet() = default;
    XlsWorksheet(const XlsWorksheet&) = delete;
    XlsWorksheet& operator=(const XlsWorksheet&) = delete;

    // Sets a cell in a row that is not complete. Raises rdl::Error past the last row of a sheet.
    void Put(std::uint32_t row, const XlsCell& cell);
    bool IsFree(const XlsRange& range) const;
    enum class HeightKind { Fixed, ByText };
    // Sets the minimum height of a row in points; the largest value counts. A program may adjust the height
    // of a row to its text unless one call was with Fixed.
    void Height(std::uint32_t row, double points, HeightKind kind);
    // Merges the cells of a range; its first cell shows. The range lies in the sheet and touches no other
    // merged one: programs refuse a file in which two overlap.
    virtual void Merge(const XlsRange& range) = 0;
    // Links the cells of a range to an address. A link that is empty, longer than the format can hold or one
    // too many for a sheet is omitted.
    virtual void Link(const XlsRange& range, const std::string& link) = 0;
    // Links to a cell by its defined name; omitted if the name is never placed.
    void LinkToName(const XlsRange& range, const std::string& target) {
        m_nameLinks.emplace_back(range, target);
    }
    void Picture(const XlsPicture& picture) { m_pictures.push_back(picture); }
    // Begins an area whose cells have the format `xf` wherever nothing else is put, from `row` on; an area
    // that begins later lies above it. Returns its number, for EndFill.
    std::size_t BeginFill(std::uint32_t row, std::uint16_t firstColumn, std::uint16_t lastColumn,
                          std::uint16_t xf);
    // The area ends before `row`.
    void EndFill(std::size_t fill, std::uint32_t row);
    // Sides of a cell, to be combined.
    enum Side : unsigned { Left = 1, Right = 2, Top = 4, Bottom = 8 };
    enum class FrameTop { Shown, Omitted };
    // Begins an area whose outer cells have the box's borders where they have none themselves, from `row` on;
    // the one at the top may be omitted. Returns its number, for EndFrame.
    std::size_t BeginFrame(std::uint32_t row, std::uint16_t firstColumn, std::uint16_t lastColumn,
                           const layout::BoxStylePtr& box, FrameTop top);
    // The area ends before `row`. Until this row is complete a further call moves the end.
    void EndFrame(std::size_t frame, std::uint32_t row);
    // Marks a heading row: frozen in view and printed on each page. The first call and adjacent rows after it
    // count.
    void Heading(std::uint32_t row);
    // Declares every row before `row` complete.
    void Complete(std::uint32_t row);
    bool IsEmpty() const { return m_usedRows == 0 && m_rows.empty(); }

    std::string name;
    bool rightToLeft = false;  // column A is at the right
    bool HasHeading() const { return m_headingEnd > m_headingBegin; }
    std::uint32_t HeadingBegin() const { return m_headingBegin; }
    std::uint32_t HeadingEnd() const { return m_headingEnd; }
    // Whether the heading stays in view.
    bool IsFrozen() const {
        return HasHeading() && m_headingEnd <= XlsLastFrozenRow && m_headingEnd < m_usedRows;
    }
    const std::vector<XlsPicture>& pictures() const { return m_pictures; }
    double RowHeight(std::uint32_t row) const {
        return row < m_heights.size() ? m_heights[row] : XlsDefaultRowHeight;
    }
    const std::vector<double>& columnWidths() const { return m_columnWidths; }
    const XlsPage& page() const { return m_page; }
    const std::vector<std::pair<XlsRange, std::string>>& nameLinks() const { return m_nameLinks; }

 protected:
    struct Row {
        std::vector<XlsCell> cells;  // when it is written: by column, one for each
        std::vector<bool> taken;     // by column: whether a cell was put there
        double height = 0;
        bool fixed = false;
    };
    // Sets the row's height if the format gives it another one.
    virtual void WriteRow(std::uint32_t index, Row& row) = 0;
    // Returns the index of a cell format with the box's borders at these sides, where it has none itself.
    virtual std::uint16_t Framed(std::uint16_t xf, const layout::BoxStyle& box, unsigned sides) = 0;
    virtual std::uint16_t PlainStyle() const = 0;  // of a cell without box and text style
    // Called when no row is kept: no cell refers to a text any more.
    virtual void RowsAreWritten() {}
    std::uint32_t UsedRows() const { return m_usedRows; }
    void CompleteAll() { Complete(m_bounds.rows); }

 private:
    struct Fill {
        std::size_t number;
        XlsRange area;
        std::uint16_t xf;
    };
    struct Frame {
        std::size_t number;
        XlsRange area;
        layout::BoxStylePtr box;
        bool begins = true, ends = false;
    };
    void CheckRow(std::uint32_t row) const;
    void AddFills(std::uint32_t index, Row& row) const;
    void AddFrames(std::uint32_t index, Row& row);
    void FinishRow(std::uint32_t index, Row& row);

    const XlsBounds m_bounds;
    std::vector<double> m_columnWidths;
    XlsPage m_page;
    std::map<std::uint32_t, Row> m_rows;
    std::vector<Fill> m_fills;  // of rows that are not complete
    std::size_t m_nextFill = 0;
    std::vector<Frame> m_frames;  // of rows that are not complete
    std::size_t m_nextFrame = 0;
    std::vector<float> m_heights;  // of completed rows, for placing images
    std::uint32_t m_usedRows = 0;
    std::uint32_t m_headingBegin = 0, m_headingEnd = 0;
    std::vector<XlsPicture> m_pictures;
    std::vector<std::pair<XlsRange, std::string>> m_nameLinks;
};

}  // namespace rdl::writers
