// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdio>
#include <optional>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/common/writers.h"
#include "rdl/writers/pdf/archive.h"
#include "rdl/writers/pdf/content.h"
#include "rdl/writers/pdf/document_outline.h"
#include "rdl/writers/pdf/structure.h"

namespace rdl::writers {
namespace {

// Takes the pages as they are laid out; of each only the numbers of its objects are kept until the end.
class PdfPages : public layout::PageSink {
 public:
    PdfPages(PdfFile& file, const ExportOptions& choices)
        : m_file(file), m_images(file), m_content(m_fonts, m_images), m_isForArchive(choices.forArchive) {
        if (m_isForArchive) {
            LimitForArchive(file);
            m_images.WithoutCmyk();
            m_content.DrawMissingGlyphs();
        }
    }
    // Returns where the elements of the pages go.
    layout::Structure& Structured() {
        m_content.MarkFor(m_structure.emplace(m_file));
        return *m_structure;
    }

    void Body(int page, layout::Page& content) override { Whole(page, content); }
    void Whole(int page, const layout::Page& content) {
        Sheet& sheet = At(page);
        sheet.width = content.width;
        sheet.height = content.height;
        if (m_isForArchive) {
            CheckPageForArchive(content.width, content.height);
        }
        if (m_structure) {
            sheet.key = m_structure->BeginPage(sheet.object);
        }
        sheet.streams[0] = Add(page, content);
        if (m_structure) {
            m_structure->EndPage();
        }
    }
    void Margins(int page, layout::Page& content) override {
        Sheet& sheet = At(page);
        sheet.streams[1] = Add(page, content);
    }
    // Returns the page tree's number.
    int Finish();
    // To be written after Finish; both return entries of the catalog.
    std::string Outline() { return m_outline.Write(m_file); }
    std::string Structure() { return m_structure ? m_structure->Finish() : std::string(); }

 private:
    struct Sheet {
        int object = 0;
        double width = 0, height = 0;
        int key = 0;  // in the parent tree
        std::array<int, 2> streams{};
        std::vector<int> links;
    };
    // Where it leads may come later, or never: then it is left out.
    struct BookmarkLink {
        std::size_t page;
        std::string area, bookmark;
        layout::ElementId tag;
    };

    Sheet& At(int page) {
        while (m_sheets.size() <= static_cast<std::size_t>(page)) {
            m_sheets.emplace_back().object = m_file.Reserve();
        }
        return m_sheets[static_cast<std::size_t>(page)];
    }
    int Add(int page, const layout::Page& content) {
        const Sheet& sheet = At(page);
        const std::string& drawn = m_content.Draw(content, sheet.height);
        for (const layout::Op& op : content.ops) {
            if (const auto* link = std::get_if<layout::LinkOp>(&op)) {
                AddLink(static_cast<std::size_t>(page), *link);
            } else if (const auto* anchor = std::get_if<layout::AnchorOp>(&op)) {
                AddAnchor(sheet, *anchor);
            }
        }
        return m_file.Stream("", drawn);
    }
    void AddLink(std::size_t page, const layout::LinkOp& link);
    void PutLink(std::size_t page, const std::string& area, const std::string& target, layout::ElementId tag);
    void AddAnchor(const Sheet& sheet, const layout::AnchorOp& anchor);

    PdfFile& m_file;
    PdfFonts m_fonts;
    PdfImages m_images;
    PdfContent m_content;
    const bool m_isForArchive;
    std::optional<PdfStructure> m_structure;
    PdfOutline m_outline;
    std::vector<Sheet> m_sheets;
    std::vector<BookmarkLink> m_bookmarkLinks;
};

void PdfPages::AddLink(std::size_t page, const layout::LinkOp& link) {
    const double height = m_sheets[page].height;
    std::string area = "[";
    for (const double edge : {link.x, height - link.y - link.height, link.x + link.width, height - link.y}) {
        PdfNumber(area, edge);
        area += ' ';
    }
    area += ']';
    if (link.bookmark.size() > MostStringBytes) {
        return;
    }
    if (!link.bookmark.empty()) {
        m_bookmarkLinks.push_back({page, std::move(area), link.bookmark, link.tag});
        if (m_structure && link.tag) {
            m_structure->Hold(link.tag);
        }
    } else if (const std::string uri = WebAddress(link.uri); !uri.empty() && uri.size() <= MostStringBytes) {
        PutLink(page, area, "/A<</S/URI/URI" + PdfLiteral(uri) + ">>", link.tag);
    }
}

void PdfPages::PutLink(std::size_t page, const std::string& area, const std::string& target,
                       layout::ElementId tag) {
    Sheet& sheet = m_sheets[page];
    const int number = m_file.Reserve();
    sheet.links.push_back(number);
    std::string body = "<</Type/Annot/Subtype/Link/Border[0 0 0]/Rect" + area + target;
    // Printed and not hidden (ISO 19005-2, 6.3.2).
    body += m_isForArchive ? "/F 4" : "";
    if (m_structure && tag) {
        body += "/StructParent " + std::to_string(m_structure->AddLink(tag, number, sheet.object));
    }
    m_file.Object(number, body + ">>");
}

void PdfPages::AddAnchor(const Sheet& sheet, const layout::AnchorOp& anchor) {
    const double y = sheet.height - anchor.y;
    if (!anchor.bookmark.empty() && anchor.bookmark.size() <= MostStringBytes) {
        m_outline.AddDestination(anchor.bookmark, sheet.object, anchor.x, y);
    }
    if (!anchor.label.empty()) {
        m_outline.AddEntry(anchor.label, anchor.level, sheet.object, anchor.x, y);
    }
}

int PdfPages::Finish() {
    for (const BookmarkLink& link : m_bookmarkLinks) {
        if (m_outline.Knows(link.bookmark)) {
            PutLink(link.page, link.area, "/Dest" + PdfLiteral(link.bookmark), link.tag);
        }
    }
    const std::string fonts = m_fonts.Write(m_file);
    const int resources = m_file.Object("<</Font<<" + fonts + ">>/XObject<<" + m_images.Resources() +
                                        ">>/ExtGState<<" + m_content.Resources() + ">>>>");
    const int tree = m_file.Reserve();
    std::string kids = "<</Type/Pages/Count " + std::to_string(m_sheets.size()) + "/Kids[";
    for (const Sheet& sheet : m_sheets) {
        std::string body = "<</Type/Page/Parent " + PdfReference(tree) + "/MediaBox[0 0 ";
        PdfNumber(body, sheet.width);
        body += ' ';
        PdfNumber(body, sheet.height);
        body += "]/Resources " + PdfReference(resources) + "/Contents[";
        for (const int stream : sheet.streams) {
            body += stream ? PdfReference(stream) + " " : "";
        }
        body += "]";
        if (m_structure) {
            body += "/StructParents " + std::to_string(sheet.key) + "/Tabs/S";
        }
        if (!sheet.links.empty()) {
            body += "/Annots[";
            for (const int link : sheet.links) {
                body += PdfReference(link) + " ";
            }
            body += "]";
        }
        m_file.Object(sheet.object, body + ">>");
        kids += PdfReference(sheet.object) + " ";
    }
    m_file.Object(tree, kids + "]>>");
    return tree;
}

std::string Date(std::int64_t ticks) {
    const DateTimeParts at = SplitTicks(ticks);
    char text[32];
    std::snprintf(text, sizeof text, "(D:%04d%02d%02d%02d%02d%02d)", at.year, at.month, at.day, at.hour,
                  at.minute, at.second);
    return text;
}

std::string Info(const DocumentInfo& document, const Options& options) {
    std::string info = "<</Producer" + PdfText(Producer);
    const auto add = [&](const char* key, const std::string& text) {
        if (!text.empty()) {
            info += key + PdfText(text);
        }
    };
    add("/Title", document.title);
    add("/Author", document.author);
    add("/Subject", document.description);
    const std::string date = Date(options.nowTicks);
    return info + "/CreationDate" + date + "/ModDate" + date + ">>";
}

void Finish(PdfFile& file, PdfPages& pages, const DocumentInfo& given, const Options& options) {
    const DocumentInfo document = options.choices.forArchive ? InfoForArchive(given) : given;
    const int tree = pages.Finish();
    std::string catalog = "<</Type/Catalog/Pages " + PdfReference(tree) + pages.Outline() + pages.Structure();
    if (options.choices.forArchive) {
        catalog += WriteArchiveEntries(file, document, options.nowTicks);
    }
    if (!document.language.empty()) {
        catalog += "/Lang" + PdfText(document.language);
    }
    if (!document.title.empty()) {
        catalog += "/ViewerPreferences<</DisplayDocTitle true>>";
    }
    const int root = file.Object(catalog + ">>");
    const std::string info = Info(document, options);
    file.Finish(root, file.Object(info), info);
}

}  // namespace

DocumentInfo InfoOf(const layout::ReportInstance& report) {
    return {report.title, report.author, report.description, report.language};
}

void WritePdf(layout::ReportInstance& report, Output& output, const Options& options) {
    PdfFile file(output);
    PdfPages pages(file, options.choices);
    layout::Structure* const structure = options.choices.tagged ? &pages.Structured() : nullptr;
    layout::Paginate(report, pages, {}, structure);
    Finish(file, pages, InfoOf(report), options);
}

void WritePdf(const DocumentInfo& info, const std::function<std::shared_ptr<const layout::Page>()>& next,
              Output& output, const Options& options) {
    PdfFile file(output);
    PdfPages pages(file, options.choices);
    for (int page = 0; const auto content = next(); ++page) {
        pages.Whole(page, *content);
    }
    Finish(file, pages, info, options);
}

}  // namespace rdl::writers
