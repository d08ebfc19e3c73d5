// SPDX-License-Identifier: GPL-3.0-or-later
// Table and List of the older schemas.
#include <algorithm>

#include "rdl/definition/group_reader.h"
#include "rdl/definition/regions.h"

namespace rdl {
namespace {

class TableReader {
 public:
    TableReader(Context& context, const XmlElement& element)
        : m_context(context), m_element(element), m_where(PlaceOf(element)) {}

    ItemPtr Read(Extent container) {
        auto tablix = std::make_unique<Tablix>();
        m_tablix = tablix.get();
        ReadRegion(m_context, m_element, *tablix, container);
        ReadColumns();
        AddBand(m_element.Child("Header"), TablixMember::KeepWithGroup::After, tablix->rowMembers);
        const XmlElement* groups = m_element.Child("TableGroups");
        AddGroups(groups ? &groups->children : nullptr, 0, tablix->rowMembers);
        AddBand(m_element.Child("Footer"), TablixMember::KeepWithGroup::Before, tablix->rowMembers);
        if (tablix->rows.empty()) {
            m_context.Fail(m_element, m_where, "it has no rows");
        }
        tablix->width = SumOf(tablix->columnWidths, 0, tablix->columnWidths.size());
        tablix->height = 0;
        for (const TablixRow& row : tablix->rows) {
            tablix->height += row.height;
        }
        return tablix;
    }

 private:
    void ReadColumns() {
        if (const XmlElement* columns = m_element.Child("TableColumns")) {
            for (const XmlElement& column : columns->children) {
                m_tablix->columnWidths.push_back(m_context.Size(column, "Width", m_where + ", TableColumn"));
                TablixMember& member = m_tablix->columnMembers.emplace_back();
                member.visibility = ReadVisibility(m_context, column, m_where + ", TableColumn");
                member.fixedData = m_context.Flag(column, "FixedHeader", m_where);
            }
        }
        if (m_tablix->columnWidths.empty()) {
            m_context.Fail(m_element, m_where, "it has no columns");
        }
    }

    // Header or footer rows: static members that stay with the group beside them.
    void AddBand(const XmlElement* band, TablixMember::KeepWithGroup keep,
                 std::vector<TablixMember>& members) {
        if (!band) {
            return;
        }
        const bool repeat = m_context.Flag(*band, "RepeatOnNewPage", PropertyOf(m_where, band->name));
        const std::size_t first = members.size();
        AddRows(*band, members);
        for (std::size_t i = first; i < members.size(); ++i) {
            members[i].keepWithGroup = keep;
            members[i].repeatOnNewPage = repeat;
        }
    }

    // The groups from `level` on, one within the other, and the detail rows within the innermost.
    void AddGroups(const std::vector<XmlElement>* groups, std::size_t level,
                   std::vector<TablixMember>& members) {
        if (!groups || level >= groups->size()) {
            AddDetails(members);
            return;
        }
        if (level > MaxGroups) {
            m_context.Fail(m_element, m_where, "its groups are nested too deep");
        }
        const XmlElement& element = (*groups)[level];
        TablixMember member;
        TakeGroup(element, member);
        AddBand(element.Child("Header"), TablixMember::KeepWithGroup::After, member.members);
        AddGroups(groups, level + 1, member.members);
        AddBand(element.Child("Footer"), TablixMember::KeepWithGroup::Before, member.members);
        if (!member.members.empty()) {
            members.push_back(std::move(member));
        }
    }

    void AddDetails(std::vector<TablixMember>& members) {
        const XmlElement* details = m_element.Child("Details");
        if (!details) {
            return;
        }
        TablixMember member;
        TakeGroup(*details, member);
        std::vector<TablixMember> rows;
        AddRows(*details, rows);
        if (rows.empty()) {
            return;
        }
        // One row needs no member of its own, unless it hides by a rule of its own.
        if (rows.size() > 1 || rows[0].visibility.hidden.IsSet()) {
            member.members = std::move(rows);
        }
        members.push_back(std::move(member));
    }

    void TakeGroup(const XmlElement& element, TablixMember& member) {
        const XmlElement* grouping = element.Child("Grouping");
        member.group = grouping ? ReadGroup(m_context, *grouping) : Group{};
        member.sorts = ReadSorts(m_context, element, m_where);
        member.visibility = ReadVisibility(m_context, element, PropertyOf(m_where, element.name));
    }

    void AddRows(const XmlElement& band, std::vector<TablixMember>& members) {
        const XmlElement* rows = band.Child("TableRows");
        if (!rows) {
            return;
        }
        for (const XmlElement& element : rows->children) {
            TablixMember& member = members.emplace_back();
            member.visibility = ReadVisibility(m_context, element, m_where + ", TableRow");
            m_tablix->rows.push_back(ReadRow(element));
        }
    }

    TablixRow ReadRow(const XmlElement& element) {
        TablixRow row;
        row.height = m_context.Size(element, "Height", m_where + ", TableRow");
        const std::vector<double>& widths = m_tablix->columnWidths;
        if (const XmlElement* cells = element.Child("TableCells")) {
            for (const XmlElement& cell : cells->children) {
                const std::size_t column = row.cells.size();
                const int left = static_cast<int>(widths.size() - column);
                if (left < 1) {
                    m_context.Fail(cell, m_where, "a row has more cells than there are columns");
                }
                const int span = m_context.Number(cell, "ColSpan", m_where + ", TableCell", 1, left, 1);
                const Extent extent{SumOf(widths, column, static_cast<std::size_t>(span)), row.height};
                AddSpanned(row.cells, ReadCellItem(m_context, &cell, extent), span);
            }
        }
        row.cells.resize(widths.size());
        return row;
    }

    static constexpr std::size_t MaxGroups = 100;

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    Tablix* m_tablix = nullptr;
};

}  // namespace

ItemPtr ReadTable(Context& context, const XmlElement& element, Extent container) {
    return TableReader(context, element).Read(container);
}

// A list is a region of one cell, which holds a rectangle with the list's items.
ItemPtr ReadList(Context& context, const XmlElement& element, Extent container) {
    auto tablix = std::make_unique<Tablix>();
    ReadRegion(context, element, *tablix, container);
    context.CountItem(element);
    auto rectangle = std::make_unique<Rectangle>();
    rectangle->name = tablix->name;
    rectangle->items = ReadItems(context, element, {tablix->width, tablix->height});
    for (const ItemPtr& item : rectangle->items) {
        tablix->width = std::max(tablix->width, item->left + item->width);
        tablix->height = std::max(tablix->height, item->top + item->height);
    }
    Fill(*rectangle, {tablix->width, tablix->height});
    TablixMember member;
    const XmlElement* grouping = element.Child("Grouping");
    member.group = grouping ? ReadGroup(context, *grouping) : Group{};
    member.sorts = ReadSorts(context, element, PlaceOf(element));
    tablix->columnWidths.push_back(tablix->width);
    tablix->columnMembers.emplace_back();
    tablix->rowMembers.push_back(std::move(member));
    TablixRow& row = tablix->rows.emplace_back();
    row.height = tablix->height;
    AddSpanned(row.cells, std::move(rectangle), 1);
    return tablix;
}

}  // namespace rdl
