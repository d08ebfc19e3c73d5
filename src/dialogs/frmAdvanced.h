// SPDX-License-Identifier: GPL-3.0-or-later
// "Advanced Properties": a selection formula in a large box.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/controls/editable_text.h"

namespace Ui {
class frmAdvanced;
}

class frmAdvanced : public QDialog {
    Q_OBJECT
 public:
    // Shows the formula until the user applies it, which writes it back to `txtSelForm`, or cancels.
    static void ShowModal(EditableText& txtSelForm);

    explicit frmAdvanced(EditableText& txtSelForm, QWidget* parent = nullptr);
    ~frmAdvanced() override;

    void txtForm_LostFocus();
    void cmdOk_Click();
    void cmdCancel_Click();

 private:
    std::unique_ptr<Ui::frmAdvanced> m_ui;
    EditableText& m_txtSelForm;
};
