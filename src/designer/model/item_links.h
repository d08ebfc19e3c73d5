// SPDX-License-Identifier: GPL-3.0-or-later
// Where a report item leads to and how it is found (MS-RDL, Action, Drillthrough, ToolTip, Bookmark and
// DocumentMapLabel; in 2003 and 2005 Label).
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/model/element_rows.h"

namespace designer {

enum class LinkKind { None, Address, Bookmark, Report };

struct LinkParameter {
    int place = NewRow;  // among the parameters in the file
    std::string name, value = {};
    bool operator==(const LinkParameter&) const = default;
};

struct ItemLinks {
    LinkKind kind = LinkKind::None;
    std::string target = {};                     // an address, a bookmark or the name of a report
    std::vector<LinkParameter> parameters = {};  // of the report
    std::string label = {}, toolTip = {}, bookmark = {};
    bool operator==(const ItemLinks&) const = default;
};

ItemLinks LinksOf(const Document& document, ElementId item);
// Writes what differs from LinksOf. Edits of the step that is open.
void PutLinks(Document& document, ElementId item, const ItemLinks& links);

}  // namespace designer
