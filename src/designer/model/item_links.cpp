// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/item_links.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr const char* NewerAction = "ActionInfo/Actions/Action";
constexpr const char* OlderAction = "Action";

// Files mix the forms: the one that is there counts, else that of the schema.
std::string FormOf(const Document& document, ElementId item, const char* newer, const char* older) {
    const bool isOlder = IsOlderSchema(document);
    const char* usual = isOlder ? older : newer;
    const char* other = isOlder ? newer : older;
    const bool isOther = document.Find(item, usual) == NoElement && document.Find(item, other) != NoElement;
    return isOther ? other : usual;
}

std::string ActionOf(const Document& document, ElementId item) {
    return FormOf(document, item, NewerAction, OlderAction);
}

std::string LabelOf(const Document& document, ElementId item) {
    return FormOf(document, item, "DocumentMapLabel", "Label");
}

struct Form {
    LinkKind kind;
    const char* element;
    const char* target;  // from the action
};
constexpr Form Forms[] = {
    {LinkKind::Address, "Hyperlink", "Hyperlink"},
    {LinkKind::Bookmark, "BookmarkLink", "BookmarkLink"},
    {LinkKind::Report, "Drillthrough", "Drillthrough/ReportName"},
};

void PutParameters(Document& document, ElementId item, const std::string& path,
                   const std::vector<LinkParameter>& parameters, const std::vector<LinkParameter>& old) {
    std::vector<int> places;
    places.reserve(parameters.size());
    for (const LinkParameter& parameter : parameters) {
        places.push_back(parameter.place);
    }
    const std::vector<ElementId> ids =
        PutRows(document, item, path, "Parameter", places, [&](std::size_t row) {
            return "<Parameter Name=\"" + EscapedValue(parameters[row].name, '"') + "\"/>";
        });
    for (std::size_t row = 0; row < ids.size(); ++row) {
        const LinkParameter& parameter = parameters[row];
        if (parameter.place == NewRow || parameter != old[static_cast<std::size_t>(parameter.place)]) {
            SetAttribute(document, ids[row], "Name", parameter.name);
            SetText(document, ids[row], "Value", parameter.value);
        }
    }
}

void PutAction(Document& document, ElementId item, const ItemLinks& links, const ItemLinks& old) {
    const std::string action = ActionOf(document, item);
    if (links.kind == LinkKind::None) {
        RemoveAt(document, item, action);
        return;
    }
    for (const Form& form : Forms) {
        if (form.kind != links.kind) {
            RemoveAt(document, item, action + "/" + form.element);
            continue;
        }
        SetText(document, item, action + "/" + form.target, links.target);
        if (form.kind == LinkKind::Report) {
            PutParameters(document, item, action + "/Drillthrough/Parameters", links.parameters,
                          old.parameters);
        }
    }
}

}  // namespace

ItemLinks LinksOf(const Document& document, ElementId item) {
    ItemLinks links;
    const std::string action = ActionOf(document, item);
    for (const Form& form : Forms) {
        if (links.kind == LinkKind::None && document.Find(item, action + "/" + form.element) != NoElement) {
            links.kind = form.kind;
            links.target = document.TextAt(item, action + "/" + form.target).value_or("");
        }
    }
    for (const ElementId one :
         ChildrenNamed(document, item, action + "/Drillthrough/Parameters", "Parameter")) {
        links.parameters.push_back({static_cast<int>(links.parameters.size()),
                                    document.Attribute(one, "Name").value_or(""),
                                    document.TextAt(one, "Value").value_or("")});
    }
    links.label = document.TextAt(item, LabelOf(document, item)).value_or("");
    links.toolTip = document.TextAt(item, "ToolTip").value_or("");
    links.bookmark = document.TextAt(item, "Bookmark").value_or("");
    return links;
}

void PutLinks(Document& document, ElementId item, const ItemLinks& links) {
    const ItemLinks old = LinksOf(document, item);
    if (links.kind != old.kind || links.target != old.target || links.parameters != old.parameters) {
        PutAction(document, item, links, old);
    }
    SetOrRemove(document, item, LabelOf(document, item), links.label);
    SetOrRemove(document, item, "ToolTip", links.toolTip);
    SetOrRemove(document, item, "Bookmark", links.bookmark);
}

}  // namespace designer
