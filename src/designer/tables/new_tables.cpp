// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/new_tables.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/fields.h"
#include "platform/base/ascii.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr double ColumnWidth = 90, RowHeight = 18, ListWidth = 270, ListHeight = 72;  // points
constexpr std::size_t UsualColumns = 3;

struct Cell {
    std::string text;
    bool isHead = false, isNumber = false;
};

class TableWriter {
 public:
    TableWriter(const Document& document, const ReportSet& set, const Rect& place)
        : m_document(document), m_names(document), m_set(set), m_place(place) {}

    std::string Table(const std::vector<std::string>& fields) {
        std::string head, details, columns, members;
        const std::size_t count = fields.empty() ? UsualColumns : fields.size();
        for (std::size_t index = 0; index < count; ++index) {
            const std::string field = fields.empty() ? std::string() : fields[index];
            const bool isNumber = IsNumber(field);
            head += TablixCellXml(Box({.text = CaptionOf(field), .isHead = true, .isNumber = isNumber}));
            details +=
                TablixCellXml(Box({.text = field.empty() ? "" : FieldValue(field), .isNumber = isNumber}));
            members += "<TablixMember />";
        }
        const std::string rows = Row(RowHeight, head) + Row(RowHeight, details);
        return Region(Columns(count, Or(m_place.width / static_cast<double>(count), ColumnWidth)), rows,
                      members,
                      "<TablixMember><KeepWithGroup>After</KeepWithGroup><RepeatOnNewPage>true"
                      "</RepeatOnNewPage></TablixMember>" +
                          Details(),
                      {});
    }

    // The first two fields are the groups, the first number is summed.
    std::string Matrix() {
        std::vector<std::string> texts, numbers;
        for (const ReportField& field : m_set.fields) {
            (field.IsNumeric() ? numbers : texts).push_back(field.name);
        }
        texts.insert(texts.end(), numbers.begin(), numbers.end());
        if (texts.size() < 2) {
            throw EditError("A matrix needs a data set with two fields at least");
        }
        const std::string value = numbers.empty() ? "=CountRows()" : FieldSum(numbers.front());
        const double width = Or(m_place.width / 2, ColumnWidth);
        const std::string corner =
            "<TablixCorner><TablixCornerRows><TablixCornerRow><TablixCornerCell>"
            "<CellContents>" +
            Box({.text = CaptionOf(texts[0]), .isHead = true}) +
            "</CellContents></TablixCornerCell></TablixCornerRow></TablixCornerRows>"
            "</TablixCorner>";
        return Region(Columns(1, width),
                      Row(RowHeight, TablixCellXml(Box({.text = value, .isNumber = true}))),
                      GroupMember(texts[1], RowHeight), GroupMember(texts[0], width), corner);
    }

    std::string List() {
        const std::string rectangle = "<Rectangle Name=\"" + m_names.Take("Rectangle1") +
                                      "\"><KeepTogether>true</KeepTogether><Style /></Rectangle>";
        return Region(Columns(1, Or(m_place.width, ListWidth)),
                      Row(Or(m_place.height, ListHeight), TablixCellXml(rectangle)), "<TablixMember />",
                      Details(), {});
    }

 private:
    static double Or(double wished, double usual) { return wished > 0 ? wished : usual; }

    std::string Size(double points) const { return SizeOfReport(m_document, points); }

    bool IsNumber(const std::string& name) const {
        const auto field = std::find_if(m_set.fields.begin(), m_set.fields.end(),
                                        [&](const ReportField& one) { return one.name == name; });
        return field != m_set.fields.end() && field->IsNumeric();
    }

    std::string Box(const Cell& cell) {
        const std::string run = cell.isHead ? "<Style><FontWeight>Bold</FontWeight></Style>" : "<Style />";
        const std::string paragraph =
            cell.isNumber ? "<Style><TextAlign>Right</TextAlign></Style>" : "<Style />";
        return "<Textbox Name=\"" + m_names.Take("Textbox1") +
               "\"><CanGrow>true</CanGrow><KeepTogether>true</KeepTogether><Paragraphs><Paragraph><TextRuns>"
               "<TextRun><Value>" +
               EscapedText(cell.text, "\n") + "</Value>" + run + "</TextRun></TextRuns>" + paragraph +
               "</Paragraph></Paragraphs><Style><Border><Color>LightGrey</Color><Style>Solid</Style></Border>"
               "<PaddingLeft>2pt</PaddingLeft><PaddingRight>2pt</PaddingRight><PaddingTop>2pt</PaddingTop>"
               "<PaddingBottom>2pt</PaddingBottom></Style></Textbox>";
    }

    std::string Columns(std::size_t count, double width) const {
        std::string columns;
        for (std::size_t index = 0; index < count; ++index) {
            columns += "<TablixColumn><Width>" + Size(width) + "</Width></TablixColumn>";
        }
        return columns;
    }

    std::string Row(double height, const std::string& cells) const {
        return "<TablixRow><Height>" + Size(height) + "</Height><TablixCells>" + cells +
               "</TablixCells></TablixRow>";
    }

    std::string Details() {
        return "<TablixMember><Group Name=\"" + m_names.Take("Details") + "\" /></TablixMember>";
    }

    std::string GroupMember(const std::string& field, double size) {
        return "<TablixMember><Group Name=\"" + m_names.Take(field + "Group") +
               "\"><GroupExpressions><GroupExpression>" + FieldValue(field) +
               "</GroupExpression></GroupExpressions></Group><SortExpressions><SortExpression><Value>" +
               FieldValue(field) + "</Value></SortExpression></SortExpressions>" +
               HeaderXml(m_document, size, Box({.text = FieldValue(field), .isHead = true})) +
               "</TablixMember>";
    }

    std::string Region(const std::string& columns, const std::string& rows, const std::string& columnMembers,
                       const std::string& rowMembers, const std::string& corner) {
        return "<Tablix Name=\"" + m_names.Take("Tablix1") + "\">" + corner + "<TablixBody><TablixColumns>" +
               columns + "</TablixColumns><TablixRows>" + rows +
               "</TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers>" + columnMembers +
               "</TablixMembers></TablixColumnHierarchy><TablixRowHierarchy><TablixMembers>" + rowMembers +
               "</TablixMembers></TablixRowHierarchy><DataSetName>" + m_set.name + "</DataSetName><Top>" +
               Size(m_place.top) + "</Top><Left>" + Size(m_place.left) + "</Left><Style /></Tablix>";
    }

    const Document& m_document;
    NewNames m_names;
    const ReportSet& m_set;
    const Rect m_place;
};

}  // namespace

ElementId InsertNewTable(Document& document, const ReportBand& band, const Rect& place, NewTable kind,
                         const std::string& dataSet, const std::vector<std::string>& fields) {
    if (band.kind != BandKind::Body) {
        throw EditError("A page header or footer cannot hold a table");
    }
    if (IsOlderSchema(document)) {
        throw EditError("A new table needs a report of the schema 2008 or later");
    }
    const std::vector<ReportSet> sets = SetsOf(document);
    const auto set = std::find_if(sets.begin(), sets.end(), [&dataSet](const ReportSet& one) {
        return dataSet.empty() || SameAscii(one.name, dataSet);
    });
    if (set == sets.end()) {
        throw EditError("The report has no data set that a table could show");
    }
    const StepGroup group(document, "Insert table");
    TableWriter writer(document, *set, place);
    const std::string xml = kind == NewTable::Table    ? writer.Table(fields)
                            : kind == NewTable::Matrix ? writer.Matrix()
                                                       : writer.List();
    return InsertXml(document, EnsureChild(document, band.element, "ReportItems"), xml);
}

}  // namespace designer
