// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog of a bar code: its symbology and what it says.
#pragma once

#include "designer/graphic_dialogs/item_dialog.h"

class QComboBox;

namespace designer {

class BarcodeDialog : public ItemDialog {
    Q_OBJECT
 public:
    BarcodeDialog(DesignModel& model, ElementId item, QWidget* parent = nullptr);

 protected:
    void Write(Document& document, ElementId item) const override;

 private:
    QComboBox* AddList(const QString& label, const char* name, const QStringList& words,
                       const std::string& value);

    QComboBox *m_symbology, *m_text, *m_correction;
    ExpressionField* m_value;
};

}  // namespace designer
