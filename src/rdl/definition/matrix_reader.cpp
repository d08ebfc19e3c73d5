// SPDX-License-Identifier: GPL-3.0-or-later
// Matrix of the older schemas: levels of groupings on two sides and one cell for each pair of static members.
//
// A subtotal is a static member next to its group. Its header spans the levels below it (headerSize is their
// sum, the span their number), up to a level of static members, which it repeats. Its cells are copies of the
// group's cells.
#include "rdl/definition/group_reader.h"
#include "rdl/definition/regions.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

constexpr std::size_t MaxLevels = 50;

struct Level {
    double size = 0;
    const XmlElement* dynamic = nullptr;  // DynamicColumns or DynamicRows, or
    const XmlElement* statics = nullptr;  // StaticColumns or StaticRows
};

// Where a column or row of the body comes from.
struct Leaf {
    std::size_t index = 0;            // of the MatrixColumn or MatrixRow
    const Style* subtotal = nullptr;  // goes over the cells' own
};

// One side of the matrix: its levels, and the members and leaves that they come to.
class Side {
 public:
    Side(Context& context, const XmlElement& matrix, bool columns)
        : m_context(context), m_columns(columns), m_where(PlaceOf(matrix)) {
        const XmlElement* groupings = matrix.Child(columns ? "ColumnGroupings" : "RowGroupings");
        if (!groupings || groupings->children.empty()) {
            m_context.Fail(matrix, m_where, columns ? "it has no ColumnGroupings" : "it has no RowGroupings");
        }
        if (groupings->children.size() > MaxLevels) {
            m_context.Fail(matrix, m_where,
                           "it has more than " + std::to_string(MaxLevels) + " levels of groupings");
        }
        for (const XmlElement& grouping : groupings->children) {
            AddLevel(grouping);
        }
    }

    std::vector<TablixMember> Build() { return Members(0, {}); }
    const std::vector<Leaf>& Leaves() const { return m_leaves; }
    int LevelCount() const { return static_cast<int>(m_levels.size()); }
    double Size() const { return SizeOf(0, m_levels.size()); }

 private:
    void AddLevel(const XmlElement& grouping) {
        Level level;
        level.size =
            m_context.Size(grouping, m_columns ? "Height" : "Width", PropertyOf(m_where, grouping.name));
        level.dynamic = grouping.Child(m_columns ? "DynamicColumns" : "DynamicRows");
        level.statics = grouping.Child(m_columns ? "StaticColumns" : "StaticRows");
        if (!level.dynamic && !level.statics) {
            m_context.Fail(grouping, m_where, "a grouping has neither dynamic nor static members");
        }
        if (level.statics && !level.dynamic && m_hasStatics) {
            m_context.Fail(grouping, m_where, "only one level of a side can be static");
        }
        m_hasStatics = m_hasStatics || !level.dynamic;
        m_levels.push_back(level);
    }

    double SizeOf(std::size_t first, std::size_t count) const {
        double sum = 0;
        for (std::size_t i = first; i < first + count; ++i) {
            sum += m_levels[i].size;
        }
        return sum;
    }

    void SetHeader(TablixMember& member, const XmlElement& owner, std::size_t level, std::size_t levels) {
        member.headerSize = SizeOf(level, levels);
        (m_columns ? member.headerRowSpan : member.headerColSpan) = static_cast<int>(levels);
        const Extent cell = m_columns ? Extent{0, member.headerSize} : Extent{member.headerSize, 0};
        member.header = ReadCellItem(m_context, &owner, cell);
    }

    // Below the last level there are no members, and the one above is a leaf.
    std::vector<TablixMember> Members(std::size_t level, const Leaf& leaf) {
        std::vector<TablixMember> members;
        if (level == m_levels.size()) {
            m_leaves.push_back(leaf);
        } else if (m_levels[level].dynamic) {
            AddDynamic(*m_levels[level].dynamic, level, leaf, members);
        } else {
            AddStatics(*m_levels[level].statics, level, leaf, members);
        }
        return members;
    }

    void AddStatics(const XmlElement& statics, std::size_t level, Leaf leaf,
                    std::vector<TablixMember>& members) {
        leaf.index = 0;
        for (const XmlElement& element : statics.children) {
            TablixMember& member = members.emplace_back();
            SetHeader(member, element, level, 1);
            member.members = Members(level + 1, leaf);
            ++leaf.index;
        }
    }

    void AddDynamic(const XmlElement& element, std::size_t level, const Leaf& leaf,
                    std::vector<TablixMember>& members) {
        const XmlElement* subtotal = element.Child("Subtotal");
        const bool before = subtotal && EqualNoCase(subtotal->ChildText("Position"), "Before");
        if (before) {
            AddSubtotal(*subtotal, level, leaf, members);
        }
        TablixMember& member = members.emplace_back();
        const XmlElement* grouping = element.Child("Grouping");
        if (!grouping) {
            m_context.Fail(element, m_where, std::string(element.name) + " has no Grouping");
        }
        member.group = ReadGroup(m_context, *grouping);
        member.sorts = ReadSorts(m_context, element, m_where);
        member.visibility = ReadVisibility(m_context, element, PropertyOf(m_where, element.name));
        SetHeader(member, element, level, 1);
        member.members = Members(level + 1, leaf);
        if (subtotal && !before) {
            AddSubtotal(*subtotal, level, leaf, members);
        }
    }

    void AddSubtotal(const XmlElement& element, std::size_t level, Leaf leaf,
                     std::vector<TablixMember>& members) {
        std::size_t next = level + 1;
        while (next < m_levels.size() && m_levels[next].dynamic) {
            ++next;
        }
        m_styles.push_back(std::make_unique<Style>(ReadStyle(m_context, element, m_where + ", Subtotal")));
        leaf.subtotal = m_styles.back().get();
        TablixMember& member = members.emplace_back();
        SetHeader(member, element, level, next - level);
        member.members = Members(next, leaf);
    }

    Context& m_context;
    const bool m_columns;
    const std::string m_where;
    bool m_hasStatics = false;
    std::vector<Level> m_levels;
    std::vector<Leaf> m_leaves;
    std::vector<std::unique_ptr<Style>> m_styles;  // at fixed places: leaves point to them
};

class MatrixReader {
 public:
    MatrixReader(Context& context, const XmlElement& element)
        : m_context(context),
          m_element(element),
          m_where(PlaceOf(element)),
          m_columns(context, element, true),
          m_rows(context, element, false) {}

    ItemPtr Read(Extent container) {
        auto tablix = std::make_unique<Tablix>();
        ReadRegion(m_context, m_element, *tablix, container);
        tablix->repeatColumnHeaders = tablix->repeatRowHeaders = true;
        ReadCorner(*tablix);
        tablix->columnMembers = m_columns.Build();
        tablix->rowMembers = m_rows.Build();
        ReadColumnWidths(*tablix);
        for (const Leaf& row : m_rows.Leaves()) {
            tablix->rows.push_back(ReadRow(row, tablix->columnWidths));
        }
        tablix->width = m_rows.Size() + SumOf(tablix->columnWidths, 0, tablix->columnWidths.size());
        tablix->height = m_columns.Size();
        for (const TablixRow& row : tablix->rows) {
            tablix->height += row.height;
        }
        return tablix;
    }

 private:
    void ReadCorner(Tablix& tablix) {
        const auto rows = static_cast<std::size_t>(m_columns.LevelCount());
        const auto columns = static_cast<std::size_t>(m_rows.LevelCount());
        tablix.corner.resize(rows);
        for (std::vector<TablixCell>& row : tablix.corner) {
            row.resize(columns);
        }
        TablixCell& cell = tablix.corner[0][0];
        cell.item = ReadCellItem(m_context, m_element.Child("Corner"), {m_rows.Size(), m_columns.Size()});
        cell.rowSpan = m_columns.LevelCount();
        cell.colSpan = m_rows.LevelCount();
    }

    const XmlElement& Entry(const XmlElement& owner, std::string_view collection, std::size_t index) {
        const XmlElement* entries = owner.Child(collection);
        if (!entries || index >= entries->children.size()) {
            m_context.Fail(owner, m_where, std::string(collection) + " has too few entries");
        }
        return entries->children[index];
    }

    void ReadColumnWidths(Tablix& tablix) {
        for (const Leaf& leaf : m_columns.Leaves()) {
            tablix.columnWidths.push_back(m_context.Size(Entry(m_element, "MatrixColumns", leaf.index),
                                                         "Width", m_where + ", MatrixColumn"));
        }
    }

    TablixRow ReadRow(const Leaf& leaf, const std::vector<double>& widths) {
        const XmlElement& element = Entry(m_element, "MatrixRows", leaf.index);
        TablixRow row;
        row.height = m_context.Size(element, "Height", m_where + ", MatrixRow");
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const Leaf& column = m_columns.Leaves()[i];
            const XmlElement& cell = Entry(element, "MatrixCells", column.index);
            m_context.CountItem(cell);
            ItemPtr item = ReadCellItem(m_context, &cell, {widths[i], row.height});
            // Where two totals cross, the row's style is the one that shows.
            Restyle(item.get(), column.subtotal);
            Restyle(item.get(), leaf.subtotal);
            AddSpanned(row.cells, std::move(item), 1);
        }
        return row;
    }

    static void Restyle(ReportItem* item, const Style* over) {
        if (!item || !over) {
            return;
        }
        Override(item->style, *over);
        if (auto* textbox = dynamic_cast<Textbox*>(item)) {
            for (Paragraph& paragraph : textbox->paragraphs) {
                Override(paragraph.style, ParagraphPart(*over));
                for (TextRun& run : paragraph.runs) {
                    Override(run.style, RunPart(*over));
                }
            }
        }
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    Side m_columns, m_rows;
};

}  // namespace

ItemPtr ReadMatrix(Context& context, const XmlElement& element, Extent container) {
    return MatrixReader(context, element).Read(container);
}

}  // namespace rdl
