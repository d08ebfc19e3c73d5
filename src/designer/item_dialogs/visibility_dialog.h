// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that says when the selected items, or a group, are shown, and where pages end (MS-RDL,
// Visibility and PageBreak).
#pragma once

#include "designer/item_dialogs/values_dialog.h"

namespace designer {

class VisibilityDialog : public ValuesDialog {
    Q_OBJECT
 public:
    VisibilityDialog(DesignModel& model, const std::vector<ElementId>& ids, QWidget* parent = nullptr);
};

}  // namespace designer
