// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/report_copy.h"

#include <QWidget>

#include "designer/document/properties/properties.h"
#include "designer/expressions/expression_dialog.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"

namespace designer {
namespace {

QString FaultOfReport(const DesignModel& model, const Document& document) {
    try {
        reports::OpenRdlText(document.Bytes(), model.File().empty() ? "report.rdl" : model.File());
        return {};
    } catch (const RuntimeError& error) {
        return QString::fromStdString(error.Description());
    } catch (const SourceFlaw& flaw) {
        return QString::fromUtf8(flaw.what());
    }
}

}  // namespace

ElementId InCopy(const Document& document, ElementId id, const Document& copy) {
    return copy.IdAt(document.IndexOf(id));
}

QString FaultAfter(const DesignModel& model, const std::function<void(Document&)>& edit) {
    Document copy(model.Source().Bytes());
    try {
        edit(copy);
    } catch (const std::runtime_error& error) {  // EditError, SourceFlaw
        return QString::fromUtf8(error.what());
    }
    const QString fault = FaultOfReport(model, copy);
    return fault.isEmpty() || !FaultOfReport(model, model.Source()).isEmpty() ? QString() : fault;
}

std::optional<std::string> EditInCopy(const DesignModel& model,
                                      const std::function<ElementId(Document&)>& place, std::string_view path,
                                      QWidget* parent) {
    DesignModel copy{Document(model.Source().Bytes())};
    copy.SetFile(model.File());
    ElementId owner = NoElement;
    if (!copy.Edit({}, [&](Document& document) { owner = place(document); }) || owner == NoElement) {
        return std::nullopt;
    }
    for (const Property* property : PropertiesOf(copy.Source().Name(owner), IsOlderSchema(copy.Source()))) {
        if (property->path == path) {
            ExpressionDialog dialog(copy, {owner}, {property, {}}, parent);
            return dialog.exec() == QDialog::Accepted ? copy.Source().TextAt(owner, path) : std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace designer
