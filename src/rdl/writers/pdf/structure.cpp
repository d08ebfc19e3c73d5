// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/structure.h"

#include <algorithm>
#include <utility>

namespace rdl::writers {
namespace {

using layout::ElementId;
using layout::Role;

constexpr ElementId Document = 0;
constexpr int MostHeadingLevels = 6;

const char* NameOf(Role role) {
    switch (role) {
        case Role::Heading:
            return "H";
        case Role::Table:
            return "Table";
        case Role::TableHead:
            return "THead";
        case Role::TableBody:
            return "TBody";
        case Role::Row:
            return "TR";
        case Role::ColumnHeader:
        case Role::RowHeader:
            return "TH";
        case Role::Cell:
            return "TD";
        case Role::Figure:
            return "Figure";
        case Role::Link:
            return "Link";
        case Role::Group:
            return "Div";
        case Role::List:
            return "L";
        case Role::ListItem:
            return "LI";
        case Role::ListLabel:
            return "Lbl";
        case Role::ListBody:
            return "LBody";
        case Role::Paragraph:
            break;
    }
    return "P";
}

// Attributes of cells (14.8.5.7).
std::string TableAttributes(const layout::Element& cell) {
    std::string out;
    if (cell.columnSpan > 1) {
        out += "/ColSpan " + std::to_string(cell.columnSpan);
    }
    if (cell.rowSpan > 1) {
        out += "/RowSpan " + std::to_string(cell.rowSpan);
    }
    if (cell.role == Role::ColumnHeader || cell.role == Role::RowHeader) {
        out += cell.role == Role::ColumnHeader ? "/Scope/Column" : "/Scope/Row";
    }
    return out.empty() ? out : "/A<</O/Table" + out + ">>";
}

// Attributes of lists (14.8.5.5).
std::string ListAttributes(const layout::Element& list) {
    return list.role == Role::List
               ? std::string("/A<</O/List/ListNumbering/") + (list.isNumbered ? "Decimal" : "Disc") + ">>"
               : std::string();
}

// Whether the element stands where its first text is drawn: a link between the texts around it, a list within
// the text of an outer one, and what is beside a list.
bool IsPlacedByText(Role role, Role parent) {
    const bool isBesideLists = parent == Role::Group || parent == Role::Cell || parent == Role::RowHeader ||
                               parent == Role::ColumnHeader;
    return role == Role::Link || (role >= Role::List && role <= Role::ListBody) ||
           (role == Role::Paragraph && isBesideLists);
}

}  // namespace

PdfStructure::PdfStructure(PdfFile& file) : m_file(file), m_root(file.Reserve()) {
    Record& document = m_records.emplace_back();
    document.object = file.Reserve();
    document.parent = m_root;
    document.isAttached = true;
}

ElementId PdfStructure::Begin(const layout::Element& element) {
    Flush();
    ElementId id = static_cast<ElementId>(m_records.size());
    if (m_free.empty()) {
        m_records.emplace_back();
    } else {
        id = m_free.back();
        m_free.pop_back();
    }
    Record& record = At(id);
    record.object = m_file.Reserve();
    record.parent = At(element.parent).object;
    record.element = element;
    if (element.role == Role::Heading) {
        // Levels are not skipped (14.8.4.3.2): the first heading is of the first level.
        while (!m_headings.empty() && m_headings.back() >= element.level) {
            m_headings.pop_back();
        }
        m_headings.push_back(element.level);
        record.element.level = std::min(static_cast<int>(m_headings.size()), MostHeadingLevels);
    }
    if (!IsPlacedByText(element.role, At(element.parent).element.role)) {
        Attach(record);
    }
    return id;
}

void PdfStructure::End(ElementId element) {
    Flush();
    if (!At(element).isHeld) {
        m_ended.push_back(element);
    }
}

void PdfStructure::Attach(Record& record) {
    if (!record.isAttached) {
        record.isAttached = true;
        Record& parent = At(record.element.parent);
        Attach(parent);
        parent.kids += PdfReference(record.object) + " ";
    }
}

int PdfStructure::BeginPage(int page) {
    m_hasDrawn = true;
    m_page = page;
    m_marks = 0;
    m_marked = "[";
    m_pageKey = m_parents.size();  // links take the keys after it
    m_parents.push_back(0);
    return static_cast<int>(m_pageKey);
}

std::string PdfStructure::Mark(ElementId element) {
    Record& record = At(element);
    Attach(record);
    const std::string number = std::to_string(m_marks++);
    if (record.page == 0) {
        record.page = m_page;
    }
    record.kids += record.page == m_page
                       ? number + " "
                       : "<</Type/MCR/Pg " + PdfReference(m_page) + "/MCID " + number + ">>";
    m_marked += PdfReference(record.object) + " ";
    return "/" + TypeOf(record) + "<</MCID " + number + ">>BDC ";
}

void PdfStructure::Cover(ElementId element, double x1, double y1, double x2, double y2) {
    Record& record = At(element);
    if (record.element.role != Role::Figure || record.page != m_page) {
        return;
    }
    const bool isFirst = !std::exchange(record.isPlaced, true);
    const auto join = [isFirst](double& least, double& most, double a, double b) {
        least = isFirst ? std::min(a, b) : std::min({least, a, b});
        most = isFirst ? std::max(a, b) : std::max({most, a, b});
    };
    join(record.left, record.right, x1, x2);
    join(record.bottom, record.top, y1, y2);
}

void PdfStructure::EndPage() {
    m_parents[m_pageKey] = m_file.Reserve();
    m_file.Packed(m_parents[m_pageKey], m_marked + "]");
}

void PdfStructure::Hold(ElementId link) {
    At(link).isHeld = true;
    Attach(At(link));  // its parent may be written before
    std::erase(m_ended, link);
}

int PdfStructure::AddLink(ElementId link, int annotation, int page) {
    Record& record = At(link);
    Attach(record);
    record.isAnnotated = true;
    record.kids += "<</Type/OBJR/Pg " + PdfReference(page) + "/Obj " + PdfReference(annotation) + ">>";
    m_parents.push_back(record.object);
    return static_cast<int>(m_parents.size()) - 1;
}

std::string PdfStructure::TypeOf(const Record& record) const {
    if (record.element.role == Role::Heading) {
        return "H" + std::to_string(record.element.level);
    }
    return NameOf(record.element.role);
}

void PdfStructure::Write(Record& record) {
    const bool isDocument = &record == &At(Document);
    // A link that leads nowhere has no annotation.
    const bool isDeadLink = record.element.role == Role::Link && !record.isAnnotated;
    const std::string type = isDocument ? "Document" : isDeadLink ? "Span" : TypeOf(record);
    std::string body = "<</S/" + type;
    body += "/P " + PdfReference(record.parent) + TableAttributes(record.element) +
            ListAttributes(record.element);
    if (record.isPlaced) {
        body += "/A<</O/Layout/BBox[";
        for (const double edge : {record.left, record.bottom, record.right, record.top}) {
            PdfNumber(body, edge);
            body += ' ';
        }
        body += "]>>";
    }
    if (!record.element.description.empty()) {
        body += "/Alt" + PdfText(record.element.description);
    }
    if (record.page) {
        body += "/Pg " + PdfReference(record.page);
    }
    if (!record.kids.empty()) {
        body += "/K[" + record.kids + "]";
    }
    m_file.Packed(record.object, body + ">>");
}

// Once pages were drawn, nothing more is to come for the elements that ended before.
void PdfStructure::Flush() {
    if (!m_hasDrawn) {
        return;
    }
    m_hasDrawn = false;
    for (const ElementId element : m_ended) {
        Record& record = At(element);
        if (record.isAttached) {
            Write(record);
        }
        record = Record();
        m_free.push_back(element);
    }
    m_ended.clear();
}

std::string PdfStructure::Finish() {
    m_hasDrawn = true;
    Flush();
    for (Record& record : m_records) {
        if (record.object && record.isAttached) {
            Write(record);
        }
    }
    std::string parents = "<</Nums[";
    for (std::size_t key = 0; key < m_parents.size(); ++key) {
        parents += std::to_string(key) + " " + PdfReference(m_parents[key]) + " ";
    }
    const int tree = m_file.Object(parents + "]>>");
    m_file.Object(m_root, "<</Type/StructTreeRoot/K[" + PdfReference(At(Document).object) + "]/ParentTree " +
                              PdfReference(tree) + "/ParentTreeNextKey " + std::to_string(m_parents.size()) +
                              ">>");
    return "/MarkInfo<</Marked true>>/StructTreeRoot " + PdfReference(m_root);
}

}  // namespace rdl::writers
