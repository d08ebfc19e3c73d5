// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/item_clipboard.h"

#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"

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

std::vector<ElementId> PasteItems(Document& document, ElementId container,
                                  const std::vector<std::string>& items, double shift) {
    std::vector<ElementId> ids;
    const ElementId parent = EnsureChild(document, container, "ReportItems");
    for (const std::string& item : items) {
        const ElementId id = InsertXml(document, parent, item);
        MakeNamesUnique(document, id);
        for (const char* side : {"Left", "Top"}) {
            const auto written = document.TextAt(id, side);
            SetSize(document, id, side, (written ? PointsOf(*written).value_or(0) : 0) + shift);
        }
        ids.push_back(id);
    }
    return ids;
}

}  // namespace designer
