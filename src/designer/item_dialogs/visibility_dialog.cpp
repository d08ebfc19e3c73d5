// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/visibility_dialog.h"

#include <QFormLayout>

namespace designer {

VisibilityDialog::VisibilityDialog(DesignModel& model, const std::vector<ElementId>& ids, QWidget* parent)
    : ValuesDialog(model, ids, tr("Visibility and Page Breaks"),
                   StepName(model, tr("Change visibility of"), ids), parent) {
    setObjectName("visibilityDialog");
    AddVisibilityPage();
    AddPageBreakPage();
    Field("Hidden").setFocus();
}

}  // namespace designer
