// SPDX-License-Identifier: GPL-3.0-or-later
// "Add Report Parameters": the only dialog through which parameter values enter the system. It has one box
// for each parameter of CurrentReport. ParCaller decides what receives the values:
//
//   "frmAddReport", "frmPar"  lines of the caller's list: the name, and the value as first sub-item
//   "frmWiz"                  rows of tmpPar under ParReportName; there is no Cancel, and it must be answered
//   "frmViewer"               only ParNames and ParValues, which the other callers get as well
//
// Nothing is checked while the user types. When the dialog is left, a value that the report cannot take is
// shown in a box with the name of its parameter; the dialog then closes as if cancelled, and the caller gets
// no values. Next to the box of a number or a date stands how its text is understood.
#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <string>

#include "platform/contracts/report_engine.h"

class ComboBox;
class ListView;

namespace Ui {
class frmPar;
}

class frmPar : public QDialog {
    Q_OBJECT
 public:
    // Shows the dialog until it is left. Cancel, the close box and a refused value set ParCancelled, which
    // the caller resets first. "frmAddReport" and "frmPar" pass the list to fill; other callers pass null.
    static void ShowModal(ListView* lsvPar = nullptr);

    explicit frmPar(ListView* lsvPar = nullptr, QWidget* parent = nullptr);
    ~frmPar() override;

    // Raises 727 if two parameter names differ only in blanks and case, 9 for the 51st parameter.
    void Form_Load();
    void cmdOK_Click();
    void cmdCancel_Click();

    void reject() override;  // Esc and the close box

 private:
    ComboBox& AddCombo(const std::string& parameter, int row);
    void AddLabel(const std::string& caption, int row);
    ComboBox*& ComboSlot(int index);
    void FillCombo(report::ParameterField& parameter, int index);
    void ShowReading(const report::ParameterField& parameter, int index);
    void HideCancel();
    void FitSize(int count);
    bool TakeValue(int index);
    void GiveUp(int count);
    void HandOn(int index);
    void KeepScrolledTo(QWidget* control);

    std::unique_ptr<Ui::frmPar> m_ui;
    std::array<ComboBox*, 51> cmb{};  // slot 0 is never used
    ListView* m_lsvPar;
};
