// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/book.h"

#include <algorithm>

#include "rdl/image/decoder.h"
#include "rdl/writers/xls/drawing.h"
#include "rdl/writers/xls/file.h"
#include "rdl/writers/xls/sheet_names.h"

namespace rdl::writers {
namespace {

constexpr std::uint16_t CodePage = 0x0042, Window1 = 0x003D, BoundSheet = 0x0085, SupBook = 0x01AE,
                        ExternSheet = 0x0017, Name = 0x0018;

}  // namespace

XlsSheet& XlsBook::AddSheet(const std::vector<double>& columnWidths, const layout::PageSetup& page) {
    if (!m_sheets.empty()) {
        m_sheets.back()->Finish(m_sheets.size() == 1, SheetDrawing(m_sheets.size() - 1));
    }
    m_sheets.push_back(std::make_unique<XlsSheet>(m_spool, m_styles, columnWidths, page));
    return *m_sheets.back();
}

std::size_t XlsBook::Image(const std::shared_ptr<const std::string>& bytes, image::Type type,
                           const std::string& item) {
    const ImageNumbers::Number number = m_imageNumbers.Of(bytes);
    if (!number.isNew) {
        ++m_images[number.value].uses;
        return number.value;
    }
    const bool isGif = type == image::Type::Gif;
    m_images.push_back({isGif ? std::make_shared<const std::string>(image::AsPng(*bytes, item)) : bytes,
                        isGif ? image::Type::Png : type, 1});
    return number.value;
}

std::string XlsBook::SheetDrawing(std::size_t sheet) {
    return XlsPictures(*m_sheets[sheet], static_cast<std::uint32_t>(sheet + 1));
}

std::string XlsBook::DrawingGroup() const {
    XlsDrawingGroup group;
    for (const StoredImage& image : m_images) {
        group.AddImage(*image.stored, image.type, image.uses);
    }
    for (const auto& sheet : m_sheets) {
        group.AddSheet(static_cast<std::uint32_t>(sheet->pictures().size()));
    }
    return m_images.empty() ? std::string() : group.Records();
}

void XlsBook::NameSheets() {
    XlsSheetNames names(m_title);
    for (const auto& sheet : m_sheets) {
        XlsRecords text;
        text.ShortText(names.Next(sheet->name));
        sheet->name = text.bytes();
    }
}

void XlsBook::WriteNames(XlsRecords& records) const {
    const auto count = static_cast<unsigned>(m_sheets.size());
    if (bookmarks.IsEmpty() && std::none_of(m_sheets.begin(), m_sheets.end(),
                                            [](const auto& sheet) { return sheet->HasHeading(); })) {
        return;
    }
    records.Begin(SupBook);
    records.U16(count);
    records.U16(0x0401);  // this workbook itself
    records.End();
    const unsigned most =
        std::min(count, static_cast<unsigned>(XlsBookmarks::MostSheets));  // as many as one record holds
    records.Begin(ExternSheet);
    records.U16(most);
    for (unsigned i = 0; i < most; ++i) {
        records.U16(0);
        records.U16(i);
        records.U16(i);
    }
    records.End();
    WritePrintTitles(records, most);
    bookmarks.Write(records);
}

void XlsBook::WritePrintTitles(XlsRecords& records, unsigned sheets) const {
    for (unsigned i = 0; i < sheets; ++i) {
        const XlsSheet& sheet = *m_sheets[i];
        if (!sheet.HasHeading()) {
            continue;
        }
        records.Begin(Name);
        records.U16(0x0020);  // built in
        records.U8(0);
        records.U8(1);
        records.U16(11);
        records.U16(0);
        records.U16(i + 1);
        records.U32(0);
        records.U8(0);
        records.U8(7);     // print titles
        records.U8(0x3B);  // an area of a sheet
        records.U16(i);
        records.U16(sheet.HeadingBegin());
        records.U16(sheet.HeadingEnd() - 1);
        records.U16(0);
        records.U16(255);
        records.End();
    }
}

std::string XlsBook::Globals(const std::vector<std::size_t>& offsets) const {
    XlsRecords records;
    records.Begin(XlsBof);
    records.U16(0x0600);
    records.U16(0x0005);
    records.U16(0x0DBB);
    records.U16(0x07CC);
    records.U32(0x41);
    records.U32(0x06);
    records.End();
    records.Begin(CodePage);
    records.U16(1200);
    records.End();
    records.Begin(Window1);
    for (const unsigned value : {0x0000u, 0x0000u, 0x4000u, 0x2000u, 0x0038u, 0u, 0u, 1u, 600u}) {
        records.U16(value);
    }
    records.End();
    m_styles.Write(records);
    for (std::size_t i = 0; i < m_sheets.size(); ++i) {
        records.Begin(BoundSheet);
        records.U32(static_cast<std::uint32_t>(offsets[i]));
        records.U16(0);
        records.Bytes(m_sheets[i]->name);
        records.End();
    }
    WriteNames(records);
    records.Bytes(DrawingGroup());
    records.Bytes(m_strings.Records());
    records.Begin(XlsEof);
    records.End();
    return std::move(records.bytes());
}

// Where the sheets begin depends on how long the globals are, which their offsets do not change.
std::string XlsBook::GlobalsAt(std::size_t sheetsBegin) const {
    std::vector<std::size_t> offsets;
    for (const auto& sheet : m_sheets) {
        offsets.push_back(sheetsBegin);
        sheetsBegin += sheet->Length();
    }
    return Globals(offsets);
}

void XlsBook::Write(Output& output) {
    m_sheets.back()->Finish(m_sheets.size() == 1, SheetDrawing(m_sheets.size() - 1));
    for (const auto& sheet : m_sheets) {
        sheet->Seal(bookmarks);
    }
    NameSheets();
    const std::string globals = GlobalsAt(GlobalsAt(0).size());
    XlsFile file;
    file.Append(globals);
    for (const auto& sheet : m_sheets) {
        sheet->Write([&](std::string_view piece) { file.Append(piece); });
    }
    file.Finish(output);
}

}  // namespace rdl::writers
