// SPDX-License-Identifier: GPL-3.0-or-later
// A sheet of a workbook under construction (MS-XLS, 2.1.7.20.5 Worksheet Substream). Complete rows are moved
// to the spool.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/common/spool.h"
#include "rdl/writers/xls/bookmarks.h"
#include "rdl/writers/xls/record.h"
#include "rdl/writers/xls/styles.h"

namespace rdl::writers {

inline constexpr std::uint32_t XlsMostRows = 65536;
inline constexpr std::size_t XlsMostColumns = 256;

struct XlsCell {
    enum Kind : std::uint8_t { Blank, Number, Text, Boolean } kind = Blank;
    std::uint16_t column = 0, xf = 0;
    double number = 0;       // Boolean: 0 or 1
    std::uint32_t text = 0;  // index in the shared string table
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

class XlsSheet {
 public:
    XlsSheet(Spool& spool, XlsStyles& styles, std::vector<double> columnWidths,
             const layout::PageSetup& page);

    // Sets a cell in a row that is not complete. Raises rdl::Error past the last row of a sheet.
    void Put(std::uint32_t row, const XlsCell& cell);
    bool IsFree(const XlsRange& range) const;
    // Sets the minimum height of a row in points; the largest value counts. Unless `fixed`, Excel may adjust
    // it to the text.
    void Height(std::uint32_t row, double points, bool fixed);
    void Merge(const XlsRange& range) { m_merges.push_back(range); }
    void Link(const XlsRange& range, const std::string& link);
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
    // Begins an area whose outer cells have the box's borders where they have none themselves, from `row` on.
    // Without `begins` the border at the top is omitted. Returns its number, for EndFrame.
    std::size_t BeginFrame(std::uint32_t row, std::uint16_t firstColumn, std::uint16_t lastColumn,
                           const layout::BoxStylePtr& box, bool begins);
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
    // Ends the sheet after its last row; `drawing` has the records of its images.
    void Finish(bool selected, const std::string& drawing);
    // Writes the links, once every bookmark is placed.
    void Seal(const XlsBookmarks& bookmarks);
    std::size_t Length() const { return m_head.bytes().size() + m_length + m_tail.bytes().size(); }
    void Write(const Spool::Take& take);
    bool HasHeading() const { return m_headingEnd > m_headingBegin; }
    std::uint32_t HeadingBegin() const { return m_headingBegin; }
    std::uint32_t HeadingEnd() const { return m_headingEnd; }
    const std::vector<XlsPicture>& pictures() const { return m_pictures; }
    double RowHeight(std::uint32_t row) const { return row < m_heights.size() ? m_heights[row] : 12.75; }
    const std::vector<double>& columnWidths() const { return m_columnWidths; }

 private:
    struct Row {
        std::vector<XlsCell> cells;
        double height = 0;
        bool fixed = false;
    };
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
    void AddFills(std::uint32_t index, Row& row) const;
    void AddFrames(std::uint32_t index, Row& row);
    void WriteRow(std::uint32_t index, Row& row);
    void WriteCell(std::uint32_t row, const XlsCell& cell);
    void FlushBlock();
    void WriteHead();
    void WriteSetup();
    void WriteView(bool selected);
    void WriteMerges();
    void BeginLink(const XlsRange& range, unsigned what);

    Spool& m_spool;
    XlsStyles& m_styles;
    std::vector<double> m_columnWidths;
    XlsPage m_page;
    std::map<std::uint32_t, Row> m_rows;
    std::vector<Fill> m_fills;  // of rows that are not complete
    std::size_t m_nextFill = 0;
    std::vector<Frame> m_frames;  // of rows that are not complete
    std::size_t m_nextFrame = 0;
    std::vector<float> m_heights;  // of completed rows, for placing images
    XlsRecords m_blockRows, m_blockCells, m_head, m_tail, m_links;
    unsigned m_blockCount = 0;
    std::size_t m_begin = 0, m_length = 0;  // range in the spool
    std::uint32_t m_usedRows = 0;
    std::uint32_t m_headingBegin = 0, m_headingEnd = 0;
    std::vector<XlsRange> m_merges;
    std::vector<XlsPicture> m_pictures;
    std::vector<std::pair<XlsRange, std::string>> m_nameLinks;
};

}  // namespace rdl::writers
