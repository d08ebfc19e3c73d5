// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xlsx/book.h"

#include <QString>
#include <algorithm>
#include <cmath>

#include "rdl/format/format.h"
#include "rdl/image/decoder.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/utf8.h"
#include "rdl/writers/common/xml_text.h"
#include "rdl/writers/xls/sheet_names.h"
#include "rdl/writers/xlsx/library.h"

namespace rdl::writers {
namespace {

lxw_workbook* OpenBook(const std::string& path) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.use_zip64 = LXW_FALSE;
    lxw_workbook* const book = workbook_new_opt(path.c_str(), &options);
    if (!book) {
        throw std::bad_alloc();
    }
    return book;
}

std::string CellName(const XlsBookmarks::Cell& cell) {
    char name[LXW_MAX_CELL_NAME_LENGTH];
    lxw_rowcol_to_cell_abs(name, cell.row, cell.column, LXW_TRUE, LXW_TRUE);
    return name;
}

// Readers undo _x0041_ in texts (ECMA-376 Part 1, 22.9.2.19 ST_Xstring): an underscore that would begin such
// an escape is escaped itself.
std::string EscapedForReaders(std::string text) {
    constexpr std::size_t Length = 7;
    const auto isEscape = [&text](std::size_t at) {
        return text.size() - at >= Length && text[at + 1] == 'x' && text[at + 6] == '_' &&
               std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at + 2),
                           text.begin() + static_cast<std::ptrdiff_t>(at + 6),
                           [](char c) { return HexDigitValue(c) >= 0; });
    };
    if (text.find("_x") == std::string::npos) {
        return text;
    }
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        out += text[at] == '_' && isEscape(at) ? "_x005F_" : text.substr(at, 1);
    }
    return out;
}

}  // namespace

XlsxBook::XlsxBook(std::string title, const DocumentInfo& info, std::int64_t nowTicks)
    : m_title(std::move(title)),
      m_file("the Excel workbook"),
      m_book(OpenBook(m_file.Path())),
      m_styles(*m_book) {
    SetDefaultFont(*m_book);
    SetProperties(info, nowTicks);
}

XlsxBook::~XlsxBook() {
    if (m_book) {
        for (const auto& sheet : m_sheets) {
            CloseFile(sheet->library());  // the library would leave it open
        }
        lxw_workbook_free(m_book);
    }
}

void XlsxBook::Check(lxw_error error) {
    if (error != LXW_NO_ERROR) {
        throw Error(std::string("The workbook cannot be written: ") + lxw_strerror(error));
    }
}

void XlsxBook::SetProperties(const DocumentInfo& info, std::int64_t nowTicks) {
    constexpr std::size_t Longest = 255;
    const auto text = [](const std::string& value) { return XmlText(WholeCharacters(value, Longest)); };
    std::string title = text(info.title), author = text(info.author), comments = text(info.description);
    lxw_doc_properties properties{};
    properties.title = title.data();
    properties.author = author.data();
    properties.comments = comments.data();
    properties.created = static_cast<time_t>((nowTicks - MakeTicks(1970, 1, 1)) / TicksPerSecond);
    Check(workbook_set_properties(m_book, &properties));
}

XlsxSheet& XlsxBook::AddSheet(const std::vector<double>& columnWidths, const layout::PageSetup& page) {
    if (!m_sheets.empty()) {
        m_sheets.back()->Finish();
        m_rows.Take(m_sheets.back()->library());
    }
    lxw_worksheet* const sheet = workbook_add_worksheet(m_book, nullptr);
    if (!sheet) {
        throw Error("A workbook cannot hold so many sheets");
    }
    m_sheets.push_back(std::make_unique<XlsxSheet>(*this, *sheet, columnWidths, page));
    return *m_sheets.back();
}

std::uint32_t XlsxBook::Text(std::string_view text) {
    m_texts.push_back(EscapedForReaders(XmlText(text)));
    return static_cast<std::uint32_t>(m_texts.size() - 1);
}

std::size_t XlsxBook::Image(const std::shared_ptr<const std::string>& bytes, image::Type type,
                            const std::string& item) {
    const ImageNumbers::Number number = m_imageNumbers.Of(bytes);
    if (!number.isNew) {
        return number.value;
    }
    const bool isKept = type == image::Type::Png || type == image::Type::Jpeg;
    m_images.push_back(
        {isKept ? bytes : std::make_shared<const std::string>(image::AsPng(*bytes, item)), item});
    return number.value;
}

std::string XlsxBook::ImageOf(const XlsPicture& picture) const {
    const StoredImage& image = m_images[picture.image];
    if (picture.cutRight <= 0 && picture.cutBottom <= 0) {
        return *image.stored;
    }
    const QImage whole = image::DecodeImage(*image.stored, image.item);
    const auto part = [](int length, double cut) {
        return std::max(1, static_cast<int>(std::lround(length * (1 - std::clamp(cut, 0.0, 1.0)))));
    };
    std::string png = image::PngOf(
        whole.copy(0, 0, part(whole.width(), picture.cutRight), part(whole.height(), picture.cutBottom)));
    if (png.empty()) {
        throw Error("Image \"" + image.item + "\" cannot be written as a PNG");
    }
    return png;
}

void XlsxBook::Write(Output& output) {
    m_sheets.back()->Finish();
    XlsSheetNames names(m_title);
    for (const auto& sheet : m_sheets) {
        sheet->Seal(EscapedForReaders(QString::fromStdU16String(names.Next(sheet->name)).toStdString()));
    }
    // The library keeps the names sorted and looks from the first one for the place of each.
    for (auto place = bookmarks.places().rbegin(); place != bookmarks.places().rend(); ++place) {
        const auto& [name, cell] = *place;
        const std::string formula =
            std::string("=") + m_sheets[cell.sheet]->library().quoted_name + "!" + CellName(cell);
        Check(workbook_define_name(m_book, name.c_str(), formula.c_str()));
    }
    m_rows.GiveBack();
    lxw_workbook* const book = std::exchange(m_book, nullptr);  // closing frees it, whatever happens
    const lxw_error error = workbook_close(book);
    m_rows.Finish();
    Check(error);
    m_file.CopyTo(output);
}

}  // namespace rdl::writers
