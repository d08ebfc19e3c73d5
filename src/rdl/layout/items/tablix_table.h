// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a data region. The order of rows is planned at once, in a few bytes a row; cells are built when
// a row is requested.
#pragma once

#include <memory>
#include <vector>

#include "rdl/layout/items/items.h"

namespace rdl::layout {

// Groups the region's rows within `outer` and plans its table rows. Sets the defined size and page breaks of
// `owner`. The builder must outlive the table.
std::shared_ptr<TableInstance> MakeTable(TablixPlan& plan, const Scope& outer, ItemBuilder& builder,
                                         Instance& owner);

class TablixTable final : public TableInstance {
 public:
    TablixTable(TablixPlan& plan, std::shared_ptr<Region> region, ItemBuilder& builder);
    std::size_t RowCount() const override { return m_rows.size(); }
    void Row(std::size_t index, TableRow& row) override;
    void RowWithin(std::size_t index, const TableColumns& columns, TableRow& row) override;
    void RowOnTop(std::size_t index, TableRow& row) override;
    std::vector<std::size_t> RepeatedRows(std::size_t index) override;
    std::vector<std::uint64_t> GroupsAround(std::size_t index) const override;
    std::vector<DataColumn> DataColumns() const override;
    bool IsFlat() const override;

 private:
    enum Flag : std::uint16_t {
        ColumnHeader = 1,
        GroupHeader = 2,
        GroupFooter = 4,
        BreakBefore = 8,
        BreakAfter = 16,
        KeepWithNext = 32,
        KeepWithPrevious = 64,
        ResetPageNumber = 128,
        StartsGroup = 256,  // first row of a group with a page name or a label
        Collapsed = 512,    // replaces a group that is collapsed
    };
    struct PlannedRow {
        std::int32_t leaf;       // body row; -1 - n: column header row n
        std::uint32_t instance;  // instance of the leaf's innermost group
        std::uint16_t flags;
    };
    struct RowHeader {
        std::uint32_t row, span;
        std::int32_t member;
        std::uint32_t instance;
    };
    struct GroupStart {
        std::uint32_t row;
        std::int32_t group;
        std::uint32_t instance;
    };
    struct Repeat {  // a row that repeats at the top of pages that begin after it and before `end`
        std::uint32_t row, end;
        std::int32_t outer;  // index of the enclosing repeat; -1: none
    };
    struct CollapsedRow {
        std::uint32_t row;
        std::int32_t group;
    };
    struct Column {
        std::int32_t leaf;
        std::uint32_t instance;
        std::int32_t group;  // innermost enclosing group, or the one that the column replaces
        bool collapsed;
    };
    struct ColumnHeaderCell {
        std::int32_t member;
        std::uint32_t instance;
        int column, span;
    };

    void ExpandColumns(const std::vector<int>& members, std::uint32_t instance);
    void ExpandColumn(int index, std::uint32_t instance);
    void MoveHeadersInside();
    int PlaceOf(int column) const;
    void ExpandRows(const std::vector<int>& members, std::uint32_t instance);
    void ExpandRow(int index, std::uint32_t instance);
    void ExpandInstances(int index, std::uint32_t parent);
    void MarkStatic(const MemberPlan& member, std::size_t begin, bool beforeGroup, bool afterGroup);
    std::size_t FirstHeading(std::size_t begin, const PageBreakPlan& rule) const;
    void MarkBreaks(const GroupPlan& group, int groupIndex, std::uint32_t instance, std::uint32_t first,
                    std::size_t begin);
    void NoteRepeats(const std::vector<int>& members, const std::vector<std::size_t>& ends,
                     std::size_t begin);
    void LinkRepeats();
    bool IsHidden(const MemberPlan& member, TableAxis axis, std::uint32_t instance);

    void Build(std::size_t index, const TableColumns* columns, TableRow& row);
    void SortCells(TableRow& row) const;
    void FillHeaderRow(int header, TableRow& row);
    void FillRowHeaders(std::size_t index, TableRow& row, std::size_t& used);
    void FillBody(const PlannedRow& planned, std::size_t index, const TableColumns* wanted, TableRow& row,
                  std::size_t& used);
    void FillGroupStart(std::size_t index, TableRow& row);
    bool AddCell(ItemPlan& item, const Scope& scope, int column, int columnSpan, int rowSpan, TableRow& row,
                 std::size_t& used);
    bool FillCell(ItemPlan& item, Instance& content);
    int BodyColumnSpan(std::size_t column, int defined) const;
    int BodyRowSpan(std::size_t index, int defined) const;
    int CollapsedGroup(std::size_t index) const;
    void Enter(const Scope& scope);

    TablixPlan& m_plan;
    std::shared_ptr<Region> m_region;
    ItemBuilder& m_builder;
    int m_headerCount = 0, m_columnsBefore = 0;  // row header columns, and body columns before them
    std::vector<PlannedRow> m_rows;
    std::vector<RowHeader> m_headers;
    std::vector<GroupStart> m_starts;  // by row, outer groups first
    std::vector<Repeat> m_repeats;
    std::vector<CollapsedRow> m_collapsed;
    std::vector<Column> m_columns;
    std::vector<ColumnHeaderCell> m_columnHeaders;
    std::vector<int> m_rowGroupOfLeaf;
};

}  // namespace rdl::layout
