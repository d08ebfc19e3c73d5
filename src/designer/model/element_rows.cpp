// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/element_rows.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

// Returns which of the rows need not move: as many as can stay in their order.
std::vector<bool> Staying(const std::vector<int>& places) {
    std::vector<std::size_t> ends;  // the last row of the best chain of each length
    std::vector<std::size_t> before(places.size(), places.size());
    for (std::size_t row = 0; row < places.size(); ++row) {
        if (places[row] == NewRow) {
            continue;
        }
        const auto at = std::lower_bound(ends.begin(), ends.end(), places[row],
                                         [&](std::size_t end, int place) { return places[end] < place; });
        before[row] = at == ends.begin() ? places.size() : *(at - 1);
        at == ends.end() ? ends.push_back(row) : static_cast<void>(*at = row);
    }
    std::vector<bool> stays(places.size());
    for (std::size_t row = ends.empty() ? places.size() : ends.back(); row < places.size();
         row = before[row]) {
        stays[row] = true;
    }
    return stays;
}

ElementId EnsurePath(Document& document, ElementId owner, std::string_view path) {
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        owner = EnsureChild(document, owner, path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    return owner;
}

}  // namespace

// The last row comes first: each one is put before the one after it.
std::vector<ElementId> PutRows(Document& document, ElementId owner, std::string_view path,
                               std::string_view element, const std::vector<int>& places,
                               const std::function<std::string(std::size_t row)>& xml) {
    const std::vector<ElementId> old = ChildrenNamed(document, owner, path, element);
    std::vector<ElementId> rows(places.size(), NoElement);
    if (!places.empty()) {
        const ElementId parent = EnsurePath(document, owner, path);
        const std::vector<bool> stays = Staying(places);
        ElementId next = NoElement;
        for (std::size_t row = places.size(); row-- > 0; next = rows[row]) {
            if (places[row] == NewRow) {
                rows[row] = InsertXml(document, parent, xml(row), next);
                continue;
            }
            rows[row] = old.at(static_cast<std::size_t>(places[row]));
            if (!stays[row]) {
                Move(document, rows[row], parent, next);
            }
        }
    }
    for (const ElementId id : old) {
        if (std::find(rows.begin(), rows.end(), id) == rows.end()) {
            Remove(document, id);
        }
    }
    return rows;
}

}  // namespace designer
