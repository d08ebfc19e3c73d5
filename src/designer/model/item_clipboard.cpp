// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/item_clipboard.h"

#include "designer/document/editing.h"
#include "designer/document/insertion.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/model/placing.h"

namespace designer {

std::string ItemsText(const Document& document, const std::vector<ElementId>& ids) {
    std::string text = "<ReportItems xmlns=\"" + EscapedValue(document.Tree().SpaceOf(0), '"') + "\">\n";
    for (const ElementId id : ids) {
        text += XmlOf(document, id) + "\n";
    }
    return text + "</ReportItems>\n";
}

std::optional<std::vector<std::string>> ItemsIn(std::string_view text) {
    try {
        const SourceTree tree{std::string(text)};
        if (tree.LocalName(0) != "ReportItems") {
            return std::nullopt;
        }
        std::vector<std::string> items;
        for (const int child : tree.Children(0)) {
            if (!IsReportItem(tree.LocalName(child))) {
                return std::nullopt;
            }
            items.emplace_back(tree.At(tree[child].whole));
        }
        return items;
    } catch (const SourceFlaw&) {
        return std::nullopt;  // some other text is on the clipboard
    }
}

// All but the first are one edit: each costs a look at the whole file.
std::vector<ElementId> PasteItems(Document& document, ElementId container,
                                  const std::vector<std::string>& items, double shift) {
    const ElementId parent = EnsureChild(document, container, "ReportItems");
    NewNames names(document);
    std::vector<Splice> splices;
    for (const std::string& item : items) {
        const std::string xml = WithNewNames(item, names);
        if (document.Children(parent).empty()) {
            InsertXml(document, parent, xml);
        } else {
            splices.push_back(InsertionOf(document, parent, NoElement, xml));
        }
    }
    if (!splices.empty()) {
        document.Apply("Paste", std::move(splices));
    }
    std::vector<ElementId> ids = document.Children(parent);
    ids.erase(ids.begin(), ids.end() - static_cast<std::ptrdiff_t>(items.size()));
    ShiftItems(document, ids, shift);
    return ids;
}

}  // namespace designer
