// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the paper, the margins and the columns of the section that the selection is in. OK is one
// step of the document.
#pragma once

#include <QDialog>
#include <array>

#include "designer/model/design_model.h"
#include "designer/model/page_setup.h"

class QComboBox;
class QFormLayout;
class QLineEdit;

namespace designer {

class Note;

class PageDialog : public QDialog {
    Q_OBJECT
 public:
    // The model must live as long as the dialog.
    explicit PageDialog(DesignModel& model, QWidget* parent = nullptr);
    void accept() override;

 private:
    void AddLine(QFormLayout& form, PageValue value, const char* name, const QString& label);
    void ShowPaper();
    void TakePaper();
    void Turn();
    void ShowBodyWidth();
    PageSetup Typed() const;
    double Points(PageValue value) const;  // 0 if it is no size
    bool Complain(PageValue value, const QString& text);
    bool IsComplete();

    DesignModel& m_model;
    const std::size_t m_section;
    const PageSetup m_old;
    QComboBox *m_paper, *m_orientation;
    std::array<QLineEdit*, PageValues> m_lines{};
    Note *m_note = nullptr, *m_widthNote = nullptr;
};

}  // namespace designer
