// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/older_matrix.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

bool IsOfColumns(const Document& document, ElementId member) {
    return document.Name(member) == "DynamicColumns";
}

}  // namespace

// The groupings stand beside each other in the file, and each is around the next one.
ElementId AddMatrixGroup(Document& document, ElementId member, GroupPlace place, const NewGroup& group,
                         const std::string& groupingXml) {
    if (place == GroupPlace::Before || place == GroupPlace::After) {
        throw EditError("A Matrix of an older schema cannot have groups beside each other");
    }
    if (group.hasHeader || group.hasFooter) {
        throw EditError("A group of a Matrix of an older schema has no header and no footer; add a total");
    }
    const bool isColumns = IsOfColumns(document, member);
    const ElementId level = document.Parent(member);
    const char* const size = isColumns ? "Height" : "Width";
    const std::string dynamic = isColumns ? "DynamicColumns" : "DynamicRows";
    const std::string tag = isColumns ? "ColumnGrouping" : "RowGrouping";
    NewNames names(document);
    const std::string box = BoxXml(document, names.Take("Textbox1"), group.expression,
                                   {ItemInCell(document, member), false, false});
    const std::string xml = "<" + tag + "><" + size + ">" + document.TextAt(level, size).value_or("1in") +
                            "</" + size + "><" + dynamic + ">" + groupingXml + "<ReportItems>" + box +
                            "</ReportItems></" + dynamic + "></" + tag + ">";
    const ElementId next = document.IdAt(document.Tree()[document.IndexOf(level)].nextSibling);
    const ElementId added =
        InsertXml(document, document.Parent(level), xml, place == GroupPlace::Parent ? level : next);
    return document.Find(added, dynamic);
}

void DeleteMatrixGroup(Document& document, ElementId member) {
    const ElementId level = document.Parent(member);
    const std::string dynamic = document.Name(member);
    const std::vector<ElementId> levels = document.Children(document.Parent(level));
    const auto groups = std::count_if(levels.begin(), levels.end(), [&](ElementId one) {
        return document.Find(one, dynamic) != NoElement;
    });
    if (groups < 2) {
        throw EditError(IsOfColumns(document, member) ? "The matrix has no other group of columns"
                                                      : "The matrix has no other group of rows");
    }
    Remove(document, level);
}

void AddMatrixTotal(Document& document, ElementId member, Side side) {
    if (document.Find(member, "Subtotal") != NoElement) {
        throw EditError("The group has a total already");
    }
    NewNames names(document);
    const std::string box =
        BoxXml(document, names.Take("Textbox1"), "Total", {ItemInCell(document, member), false, true});
    InsertXml(document, member,
              "<Subtotal><ReportItems>" + box + "</ReportItems>" +
                  (side == Side::Before ? "<Position>Before</Position>" : "") + "</Subtotal>");
}

}  // namespace designer
