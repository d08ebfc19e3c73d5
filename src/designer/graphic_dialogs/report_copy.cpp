// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/report_copy.h"

#include <QWidget>

#include "designer/document/properties/properties.h"
#include "designer/expressions/expression_dialog.h"

namespace designer {
ElementId InCopy(const Document& document, ElementId id, const Document& copy) {
    return copy.IdAt(document.IndexOf(id));
}

std::optional<std::string> EditInCopy(const DesignModel& model,
                                      const std::function<ElementId(Document&)>& place, std::string_view path,
                                      QWidget* parent) {
    DesignModel copy(model.Source().Copy());
    copy.SetFile(model.File());
    ElementId owner = NoElement;
    if (!copy.Edit({}, [&](Document& document) { owner = place(document); }) || owner == NoElement) {
        return std::nullopt;
    }
    for (const Property* property : PropertiesOf(copy.Source(), owner)) {
        if (property->path == path) {
            ExpressionDialog dialog(copy, {owner}, {property, {}}, parent);
            return dialog.exec() == QDialog::Accepted ? copy.Source().TextAt(owner, path) : std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace designer
