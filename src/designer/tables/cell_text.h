// SPDX-License-Identifier: GPL-3.0-or-later
// What new cells are written as, and edits of many places at once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/names.h"

namespace designer {

struct BoxLook {
    ElementId like = NoElement;  // a text box whose style the new one gets; others and none: padding only
    bool keepsFormat = false;    // the format of numbers and dates, and the alignment
    bool isBold = false;
};

// Returns a text box for a cell, as InsertXml takes it, in the schema of the report.
std::string BoxXml(const Document& document, const std::string& name, std::string_view value,
                   const BoxLook& look);

// Returns a TablixCell with the item.
std::string TablixCellXml(const std::string& item);
// Returns a TablixHeader of this size, in points, with the item.
std::string HeaderXml(const Document& document, double points, const std::string& item);
// Returns a size as the report writes its own.
std::string SizeOfReport(const Document& document, double points);

// Returns the text of a text box, which may be an expression; empty for any other item.
std::string TextOfBox(const Document& document, ElementId item);
// Replaces all that the text box says; its first run's style stays. Refuses any other item.
void SetTextOfBox(Document& document, ElementId item, std::string_view text);

// Gathers insertions and removals that do not overlap, and makes them as one edit of the document: the cost
// is that of one, however many there are.
class EditBatch {
 public:
    explicit EditBatch(Document& document) : m_document(document) {}
    // `before` is a child of `parent`, or NoElement: the new element comes last. A parent without children
    // takes one element only.
    void Insert(ElementId parent, ElementId before, std::string_view xml);
    void Remove(ElementId id);
    // Moves a child of `parent` within it; its ids stay.
    void Move(ElementId parent, ElementId child, ElementId before);
    void SetText(ElementId id, std::string_view text);  // of an element without children and CDATA
    void Apply();

 private:
    Document& m_document;
    std::vector<Splice> m_splices;
};

}  // namespace designer
