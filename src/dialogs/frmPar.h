// "Add Report Parameters": the one dialog through which parameter values enter the system. It asks for every
// parameter of CurrentReport in a box of its own; what becomes of the values hangs on ParCaller:
//
//   "frmAddReport", "frmPar"  lines of the caller's list: the name, and the value as first sub-item
//   "frmWiz"                  rows of tmpPar under ParReportName; there is no Cancel, and no way around it
//   "frmViewer"               nothing but ParNames and ParValues, which the others get as well
//
// Nothing is checked while it is typed. A text that the report cannot take is told, with its parameter, when
// the dialog is left: it closes then as if it had been cancelled, and the caller has nothing of it. Beside
// the box of a number or a date stands how its text is understood here.
#pragma once

#include <QDialog>
#include <array>
#include <memory>
#include <string>

#include "platform/report_engine.h"

class ComboBox;
class ListView;

namespace Ui {
class frmPar;
}

class frmPar : public QDialog {
    Q_OBJECT
 public:
    // Shows the dialog until it is left. Cancel, the close box and a value that is refused set ParCancelled,
    // which the caller clears before. The list is the one that "frmAddReport" and "frmPar" get filled; others
    // need none.
    static void ShowModal(ListView* lsvPar = nullptr);

    explicit frmPar(ListView* lsvPar = nullptr, QWidget* parent = nullptr);
    ~frmPar() override;

    // Raises 727 for two parameters whose names differ in nothing but blanks and case, 9 for the 51st.
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
