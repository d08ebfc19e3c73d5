// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

#include "rdl/definition/group_reader.h"
#include "rdl/definition/regions.h"

namespace rdl {
namespace {

constexpr int MaxSpan = 10'000;

// The children of that name of a collection element, which may be missing.
std::vector<const XmlElement*> Entries(const XmlElement* collection, std::string_view name) {
    std::vector<const XmlElement*> entries;
    if (collection) {
        for (const XmlElement& child : collection->children) {
            if (child.name == name) {
                entries.push_back(&child);
            }
        }
    }
    return entries;
}

int Span(Context& context, const XmlElement& cell, std::string_view name, const std::string& where) {
    const XmlElement* contents = cell.Child("CellContents");
    return contents ? context.Number(*contents, name, where, 1, MaxSpan, 1) : 1;
}

class TablixReader {
 public:
    TablixReader(Context& context, const XmlElement& element)
        : m_context(context), m_element(element), m_where(PlaceOf(element)) {}

    ItemPtr Read(Extent container) {
        auto tablix = std::make_unique<Tablix>();
        ReadRegion(m_context, m_element, *tablix, container);
        tablix->sorts = ReadSorts(m_context, m_element, m_where);
        tablix->repeatColumnHeaders = m_context.Flag(m_element, "RepeatColumnHeaders", m_where);
        tablix->repeatRowHeaders = m_context.Flag(m_element, "RepeatRowHeaders", m_where);
        ReadCorner(*tablix);
        ReadBody(*tablix);
        tablix->columnMembers = ReadHierarchy("TablixColumnHierarchy", true);
        tablix->rowMembers = ReadHierarchy("TablixRowHierarchy", false);
        CheckLeaves(tablix->columnMembers, tablix->columnWidths.size(), "columns");
        CheckLeaves(tablix->rowMembers, tablix->rows.size(), "rows");
        DeriveSize(*tablix);
        return tablix;
    }

 private:
    // A size that is not given is that of the parts; what stands below is moved by how much they grow.
    void DeriveSize(Tablix& tablix) const {
        if (!m_element.Child("Width")) {
            tablix.width =
                SumOf(tablix.columnWidths, 0, tablix.columnWidths.size()) + HeaderSize(tablix.rowMembers);
        }
        if (!m_element.Child("Height")) {
            tablix.height = HeaderSize(tablix.columnMembers);
            for (const TablixRow& row : tablix.rows) {
                tablix.height += row.height;
            }
        }
    }

    static double HeaderSize(const std::vector<TablixMember>& members) {
        double size = 0;
        for (const TablixMember& member : members) {
            size = std::max(size, member.headerSize + HeaderSize(member.members));
        }
        return size;
    }

    void ReadCorner(Tablix& tablix) {
        for (const XmlElement* row :
             Entries(m_element.Find({"TablixCorner", "TablixCornerRows"}), "TablixCornerRow")) {
            std::vector<TablixCell>& cells = tablix.corner.emplace_back();
            for (const XmlElement* cell : Entries(row, "TablixCornerCell")) {
                cells.push_back({ReadCellItem(m_context, cell, {}),
                                 Span(m_context, *cell, "ColSpan", m_where),
                                 Span(m_context, *cell, "RowSpan", m_where)});
            }
        }
    }

    void ReadBody(Tablix& tablix) {
        const XmlElement* body = m_element.Child("TablixBody");
        if (!body) {
            m_context.Fail(m_element, m_where, "it has no TablixBody");
        }
        for (const XmlElement* column : Entries(body->Child("TablixColumns"), "TablixColumn")) {
            tablix.columnWidths.push_back(m_context.Size(*column, "Width", m_where + ", TablixColumn"));
        }
        std::vector<const XmlElement*> rows = Entries(body->Child("TablixRows"), "TablixRow");
        std::vector<double> heights;
        heights.reserve(rows.size());
        for (const XmlElement* row : rows) {
            heights.push_back(m_context.Size(*row, "Height", m_where + ", TablixRow"));
        }
        for (std::size_t i = 0; i < rows.size(); ++i) {
            tablix.rows.push_back(ReadRow(*rows[i], i, heights, tablix.columnWidths));
        }
    }

    TablixRow ReadRow(const XmlElement& element, std::size_t index, const std::vector<double>& heights,
                      const std::vector<double>& widths) {
        TablixRow row;
        row.height = heights[index];
        for (const XmlElement* entry : Entries(element.Child("TablixCells"), "TablixCell")) {
            const std::size_t column = row.cells.size();
            if (column >= widths.size()) {
                m_context.Fail(*entry, m_where, "a row has more cells than there are columns");
            }
            TablixCell cell;
            cell.colSpan = Span(m_context, *entry, "ColSpan", m_where);
            cell.rowSpan = Span(m_context, *entry, "RowSpan", m_where);
            if (column + static_cast<std::size_t>(cell.colSpan) > widths.size() ||
                index + static_cast<std::size_t>(cell.rowSpan) > heights.size()) {
                m_context.Fail(*entry, m_where, "a cell spans more than there is");
            }
            cell.item = ReadCellItem(m_context, entry,
                                     {SumOf(widths, column, static_cast<std::size_t>(cell.colSpan)),
                                      SumOf(heights, index, static_cast<std::size_t>(cell.rowSpan))});
            row.cells.push_back(std::move(cell));
        }
        row.cells.resize(widths.size());
        return row;
    }

    std::vector<TablixMember> ReadHierarchy(std::string_view name, bool columns) {
        const XmlElement* hierarchy = m_element.Child(name);
        if (!hierarchy) {
            m_context.Fail(m_element, m_where, "it has no " + std::string(name));
        }
        return ReadMembers(hierarchy->Child("TablixMembers"), columns);
    }

    std::vector<TablixMember> ReadMembers(const XmlElement* collection, bool columns) {
        std::vector<TablixMember> members;
        for (const XmlElement* entry : Entries(collection, "TablixMember")) {
            members.push_back(ReadMember(*entry, columns));
        }
        return members;
    }

    TablixMember ReadMember(const XmlElement& element, bool columns) {
        TablixMember member;
        if (const XmlElement* group = element.Child("Group")) {
            member.group = ReadGroup(m_context, *group);
        }
        member.sorts = ReadSorts(m_context, element, m_where);
        if (const XmlElement* header = element.Child("TablixHeader")) {
            ReadHeader(*header, columns, member);
        }
        member.visibility = ReadVisibility(m_context, element, m_where);
        member.keepWithGroup = ReadKeepWithGroup(element);
        member.repeatOnNewPage = m_context.Flag(element, "RepeatOnNewPage", m_where);
        member.hideIfNoRows = m_context.Flag(element, "HideIfNoRows", m_where);
        member.keepTogether = m_context.Flag(element, "KeepTogether", m_where);
        member.fixedData = m_context.Flag(element, "FixedData", m_where);
        member.members = ReadMembers(element.Child("TablixMembers"), columns);
        return member;
    }

    // Only one side of a header's size is written; the other comes of the rows or columns that it stands
    // beside.
    void ReadHeader(const XmlElement& header, bool columns, TablixMember& member) {
        member.headerSize = m_context.Size(header, "Size", m_where + ", TablixHeader");
        member.headerColSpan = Span(m_context, header, "ColSpan", m_where);
        member.headerRowSpan = Span(m_context, header, "RowSpan", m_where);
        const Extent cell = columns ? Extent{0, member.headerSize} : Extent{member.headerSize, 0};
        member.header = ReadCellItem(m_context, &header, cell);
    }

    TablixMember::KeepWithGroup ReadKeepWithGroup(const XmlElement& element) {
        using Keep = TablixMember::KeepWithGroup;
        const std::string word = element.ChildText("KeepWithGroup");
        if (EqualNoCase(word, "Before")) {
            return Keep::Before;
        }
        if (EqualNoCase(word, "After")) {
            return Keep::After;
        }
        if (!word.empty() && !EqualNoCase(word, "None")) {
            m_context.Fail(element, m_where + ", KeepWithGroup", "\"" + word + "\" is not known");
        }
        return Keep::None;
    }

    void CheckLeaves(const std::vector<TablixMember>& members, std::size_t bodyCount, const char* what) {
        const std::size_t leaves = LeafCount(members);
        if (leaves != bodyCount) {
            m_context.Fail(m_element, m_where,
                           "its body has " + std::to_string(bodyCount) + " " + what +
                               ", its members ask for " + std::to_string(leaves));
        }
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
};

}  // namespace

ItemPtr ReadTablix(Context& context, const XmlElement& element, Extent container) {
    return TablixReader(context, element).Read(container);
}

}  // namespace rdl
