// SPDX-License-Identifier: GPL-3.0-or-later
// Members of XlsLayout: the cells of single items.
#include <algorithm>
#include <cmath>

#include "rdl/format/format.h"
#include "rdl/values/error.h"
#include "rdl/writers/xls/layout.h"
#include "rdl/writers/xls/number_format.h"

namespace rdl::writers {
namespace {

using layout::Instance;

constexpr std::int64_t MostExactInteger = 999'999'999'999'999;
const std::int64_t DayZero = MakeTicks(1899, 12, 30);
constexpr double CharacterWidth = 0.5;  // on average, relative to the font size
constexpr double FirstSafeDay = 61;     // 1 March 1900: before it Excel's calendar has a day too many

layout::CharStylePtr FirstStyle(const Instance& item) {
    for (const layout::ParagraphInstance& paragraph : item.paragraphs) {
        for (const layout::RunInstance& run : paragraph.runs) {
            return run.style;
        }
    }
    return nullptr;
}

std::string LinkOf(const Instance& item) {
    if (!item.hyperlink.empty()) {
        return SafeLink(item.hyperlink);
    }
    for (const layout::ParagraphInstance& paragraph : item.paragraphs) {
        for (const layout::RunInstance& run : paragraph.runs) {
            if (!run.hyperlink.empty()) {
                return SafeLink(run.hyperlink);
            }
        }
    }
    return {};
}

std::string TextOf(const Instance& item) {
    std::string text;
    for (std::size_t i = 0; i < item.paragraphs.size(); ++i) {
        const layout::ParagraphInstance& paragraph = item.paragraphs[i];
        text += i > 0 ? "\n" : "";
        if (paragraph.bulleted) {
            text += "\xE2\x80\xA2 ";
        } else if (paragraph.listNumber > 0) {
            text += std::to_string(paragraph.listNumber) + ". ";
        }
        for (const layout::RunInstance& run : paragraph.runs) {
            text += run.text;
        }
    }
    return text;
}

// A number that a cell can hold as such.
bool AsNumber(const Value& value, double& number) {
    switch (value.kind()) {
        case Kind::Integer:
            number = static_cast<double>(value.AsInteger());
            return value.AsInteger() >= -MostExactInteger && value.AsInteger() <= MostExactInteger;
        case Kind::Real:
            number = value.AsReal();
            return std::isfinite(number);
        case Kind::Decimal:
            number = value.AsDouble();
            return std::fabs(number) <= static_cast<double>(MostExactInteger);
        case Kind::DateTime:
            number = static_cast<double>(value.AsTicks() - DayZero) / static_cast<double>(TicksPerDay);
            return number >= FirstSafeDay;
        default:
            return false;
    }
}

// What a cell cannot hold would be missing from the workbook without a word.
void CheckLength(const std::string& text, const std::string& name) {
    constexpr std::size_t Most = 32767;
    if (text.size() > Most && ToUtf16(text, Most + 1).size() > Most) {
        throw Error("Text box \"" + name +
                    "\" has more than the 32,767 characters that a cell of an Excel workbook holds");
    }
}

}  // namespace

bool XlsLayout::TypedCell(const Instance& item, const std::string& shown, XlsCell& cell,
                          std::uint16_t& format) {
    if (item.value.kind() == Kind::Boolean) {
        cell.kind = XlsCell::Boolean;
        cell.number = item.value.AsBoolean() ? 1 : 0;
        return true;
    }
    double number = 0;
    if (!AsNumber(item.value, number)) {
        return false;
    }
    const Culture& culture = FindCulture(item.language.empty() ? m_language : item.language);
    const std::optional<std::string> excel = ExcelFormat(item.value, item.format, culture, shown);
    if (!excel) {
        return false;
    }
    cell.kind = XlsCell::Number;
    cell.number = number;
    format = m_book.Format(*excel);
    return true;
}

XlsCell XlsLayout::CellOf(const Instance& item, Wrapping wrapping) {
    XlsCell cell;
    std::uint16_t format = 0;
    const std::string shown = TextOf(item);
    if (!TypedCell(item, shown, cell, format) && !shown.empty()) {
        CheckLength(shown, item.name);
        cell.kind = XlsCell::Text;
        cell.text = m_book.Text(WithoutPageMarks(shown));
    }
    const layout::HAlign align =
        AlignmentOf(item, item.paragraphs.empty() ? layout::HAlign::General : item.paragraphs.front().align);
    const bool wrap = wrapping == Wrapping::AsItem && cell.kind == XlsCell::Text &&
                      (item.canGrow || shown.find('\n') != std::string::npos);
    cell.xf = m_book.Style(Filled(item.box), FirstStyle(item), align, format, wrap);
    return cell;
}

// What leads to the item leads to this cell.
void XlsLayout::Mark(const Instance& item, std::uint32_t row, std::uint16_t column) {
    if (!item.bookmark.empty()) {
        m_book.bookmarks.Place(item.bookmark, m_book.SheetCount() - 1, row, column);
    }
}

double XlsLayout::WidthOf(const XlsRange& range) const {
    double width = 0;
    for (std::size_t i = range.firstColumn; i <= range.lastColumn && i < m_widths.size(); ++i) {
        width += m_widths[i];
    }
    return width;
}

// Whether an item that gave way to another one is left with less room than one of its words needs. Wrapped,
// the word would be broken after each character; not wrapped, it is seen above the free cells beside it.
bool XlsLayout::IsTooNarrow(const Instance& item, const XlsRange& range) const {
    const double width = WidthOf(range);
    if (width >= item.width - 1) {
        return false;
    }
    const std::string shown = TextOf(item);
    std::size_t longest = 0;
    for (std::size_t at = 0; at < shown.size();) {
        const std::size_t end = std::min(shown.find_first_of(" \n", at), shown.size());
        longest = std::max(longest, end - at);
        at = end + 1;
    }
    const layout::CharStylePtr style = FirstStyle(item);
    return CharacterWidth * (style ? style->size : 10) * static_cast<double>(longest) > width;
}

// Programs fit the height of rows to their texts, but not to those of merged cells: such a row says its
// height.
void XlsLayout::Grow(const Instance& item, const XlsRange& range) {
    constexpr double Edge = 4;  // points that a program keeps free on the left and right together
    const bool merged = range.lastColumn > range.firstColumn;
    if (!item.canGrow || range.lastRow > range.firstRow ||
        (item.box && item.box->writingMode != layout::WritingMode::Horizontal)) {
        return;
    }
    const std::string shown = TextOf(item);
    const float padding = item.box ? item.box->paddingLeft + item.box->paddingRight : 0;
    const double width = WidthOf(range) - std::max(Edge, static_cast<double>(padding));
    const layout::CharStylePtr style = FirstStyle(item);
    const double length = CharacterWidth * (style ? style->size : 10) * static_cast<double>(shown.size());
    if (!merged && length < width && shown.find('\n') == std::string::npos) {
        return;
    }
    m_textLayout.Lay(item, std::max(width, 1.0), m_laid);
    m_sheet->Height(range.firstRow, m_laid.height,
                    merged ? XlsWorksheet::HeightKind::Fixed : XlsWorksheet::HeightKind::ByText);
}

// Returns what another item at the left leaves of a range; the range if that is not free either.
XlsRange XlsLayout::RightOfOthers(const XlsRange& range) const {
    XlsRange rest = range;
    while (rest.firstColumn < rest.lastColumn &&
           !m_sheet->IsFree({rest.firstRow, rest.lastRow, rest.firstColumn, rest.firstColumn})) {
        ++rest.firstColumn;
    }
    return m_sheet->IsFree(rest) ? rest : range;
}

void XlsLayout::PlaceText(const Instance& item, XlsRange range) {
    range = RightOfOthers(range);
    while (range.lastColumn > range.firstColumn && !m_sheet->IsFree(range)) {
        --range.lastColumn;
    }
    while (!m_sheet->IsFree(range)) {  // two items at one place: the second beside the first
        range.lastRow = range.firstRow;
        range.lastColumn = ++range.firstColumn;
        if (range.firstColumn >= m_book.Bounds().columns) {
            ++range.firstRow;
            range.firstColumn = range.lastColumn = 0;
        }
    }
    const bool isNarrow = IsTooNarrow(item, range);
    XlsCell cell = CellOf(item, isNarrow ? Wrapping::Never : Wrapping::AsItem);
    if (cell.kind == XlsCell::Text && !isNarrow) {
        Grow(item, range);
    }
    cell.spansRows = range.lastRow > range.firstRow;
    for (std::uint32_t row = range.firstRow; row <= range.lastRow; ++row) {
        for (std::uint16_t column = range.firstColumn; column <= range.lastColumn; ++column) {
            cell.column = column;
            m_sheet->Put(row, cell);
            cell = {XlsCell::Blank, 0, cell.xf};  // all but the first only carry the format
        }
    }
    if (range.lastRow > range.firstRow || range.lastColumn > range.firstColumn) {
        m_sheet->Merge(range);
    }
    if (!item.bookmarkLink.empty()) {
        m_sheet->LinkToName(range, m_book.bookmarks.NameOf(item.bookmarkLink));
    } else if (const std::string link = LinkOf(item); !link.empty()) {
        m_sheet->Link(range, link);
    }
    Mark(item, range.firstRow, range.firstColumn);
}

}  // namespace rdl::writers
