// SPDX-License-Identifier: GPL-3.0-or-later
// Every table of every report of the project, changed at random.
#include <gtest/gtest.h>

#include <random>

#include "designer/document/all_reports.h"
#include "designer/document/design_copy.h"
#include "designer/document/names.h"
#include "designer/document/report_items.h"
#include "designer/tables/cells.h"
#include "designer/tables/fields.h"
#include "designer/tables/groups.h"
#include "rdl/api/failure.h"
#include "rdl/api/report.h"
#include "support/temporary_folder.h"

namespace designer::test {
namespace {

// Returns why the engine does not open the report; empty if it does.
std::string FaultOf(const std::string& bytes) {
    const TemporaryFolder folder;
    WriteBytes(folder / "changed.rdl", bytes);
    try {
        rdl::OpenReport(folder / "changed.rdl");
        return {};
    } catch (const rdl::Failure& failure) {
        return failure.what();
    }
}

// Makes edits of all kinds by a generator with a fixed seed.
class TableEditor {
 public:
    TableEditor(Document& document, unsigned seed) : m_document(document), m_random(seed) {}

    // Returns whether the edit was possible.
    bool Edit() {
        std::vector<ElementId> regions;
        for (const ReportItem& item : ReadReportItems(m_document).items) {
            if (HasGrid(item.kind)) {
                regions.push_back(item.id);
            }
        }
        if (regions.empty()) {
            return false;
        }
        try {
            Change(regions[Pick(regions.size())]);
            return true;
        } catch (const EditError& error) {
            EXPECT_STRNE(error.what(), "");
            return false;
        }
    }

 private:
    std::size_t Pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }

    ElementId AnyGroup(ElementId region, Axis axis) {
        const std::vector<RegionGroup> groups = GroupsOf(m_document, region, axis);
        if (groups.empty()) {
            throw EditError("no groups");
        }
        return groups[Pick(groups.size())].member;
    }

    std::string AnyField(ElementId region) {
        const std::string name = DataSetOfRegion(m_document, region);
        for (const ReportSet& set : SetsOf(m_document)) {
            if (set.name == name && !set.fields.empty()) {
                return set.fields[Pick(set.fields.size())].name;
            }
        }
        throw EditError("no fields");
    }

    void Change(ElementId region) {
        const Axis axis = Pick(2) == 0 ? Axis::Columns : Axis::Rows;
        const Side side = Pick(2) == 0 ? Side::Before : Side::After;
        const TablixGrid grid = GridOf(m_document, region);
        const std::size_t count = axis == Axis::Columns ? grid.columns.size() : grid.rows.size();
        if (count == 0 || grid.columns.empty() || grid.rows.empty()) {
            throw EditError("no tracks");
        }
        switch (Pick(10)) {
            case 0:
                AddTrack(m_document, region, axis, Pick(count), side,
                         Pick(2) == 0 ? GroupSide::Inside : GroupSide::Outside);
                break;
            case 1:
                DeleteTracks(m_document, region, axis, Pick(count), 1);
                break;
            case 2:
                MoveTrack(m_document, region, axis, Pick(count), Pick(count));
                break;
            case 3:
                SetTrackSize(m_document, region, axis, Pick(count), static_cast<double>(10 + Pick(90)));
                break;
            case 4:
                MergeCells(m_document, region, Pick(grid.rows.size()), Pick(grid.columns.size()), 2);
                break;
            case 5:
                SplitCell(m_document, region, Pick(grid.rows.size()), Pick(grid.columns.size()));
                break;
            case 6: {
                const bool isBeside = Pick(3) == 0;
                AddGroup(
                    m_document, region, axis, AnyGroup(region, axis),
                    isBeside       ? (side == Side::Before ? GroupPlace::Before : GroupPlace::After)
                    : Pick(2) == 0 ? GroupPlace::Parent
                                   : GroupPlace::Child,
                    {FieldValue(AnyField(region)), !isBeside && Pick(2) == 0, !isBeside && Pick(2) == 0});
                break;
            }
            case 7:
                DeleteGroup(m_document, region, axis, AnyGroup(region, axis),
                            Pick(2) == 0 ? OwnTracks::Go : OwnTracks::Stay);
                break;
            case 8:
                AddTotal(m_document, region, axis, AnyGroup(region, axis), side);
                break;
            default:
                if (Pick(2) == 0) {
                    AddFieldColumn(m_document, region, Pick(grid.columns.size() + 1), AnyField(region));
                } else if (!grid.cells.empty()) {
                    PutField(m_document, region, grid.cells[Pick(grid.cells.size())].element,
                             AnyField(region));
                }
        }
    }

    Document& m_document;
    std::mt19937 m_random;
};

TEST(AllTables, ChangedAtRandomTheyStayReadableAndComeBack) {
    unsigned seed = 1;
    int made = 0, readable = 0;
    for (const std::filesystem::path& file : AllReports()) {
        SCOPED_TRACE(file.string());
        const std::string bytes = ReadBytes(file);
        Document document(bytes);
        const bool wasReadable = FaultOf(bytes).empty();
        TableEditor editor(document, seed++);
        for (int edit = 0; edit < 25; ++edit) {
            const std::string before = document.Bytes();
            if (editor.Edit()) {
                ++made;
                if (wasReadable && FaultOf(document.Bytes()) != "") {
                    ADD_FAILURE() << document.UndoName() << ": " << FaultOf(document.Bytes());
                    break;
                }
            } else {
                EXPECT_EQ(document.Bytes(), before);
            }
        }
        readable += wasReadable ? 1 : 0;
        MakeDesignCopy(document);
        const std::string changed = document.Bytes();
        while (document.Undo()) {
        }
        EXPECT_EQ(document.Bytes(), bytes);
        while (document.Redo()) {
        }
        EXPECT_EQ(document.Bytes(), changed);
    }
    EXPECT_GT(readable, 50);
    EXPECT_GT(made, 300);
}

}  // namespace
}  // namespace designer::test
