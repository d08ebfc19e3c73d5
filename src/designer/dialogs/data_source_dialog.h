// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that changes a data source of the report, or makes one: in the report, or in a file of its own
// that several reports share. OK is one step of the document.
#pragma once

#include <QDialog>

#include "designer/model/design_model.h"
#include "designer/model/report_data.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QWidget;

namespace designer {

class Note;
class PartForm;
class SourceForm;

class DataSourceDialog : public QDialog {
    Q_OBJECT
 public:
    // The model must live as long as the dialog. It takes a logon that the report does not keep.
    explicit DataSourceDialog(DesignModel& model, QWidget* parent = nullptr);
    // Shows the part of this name; a new one if the name is empty. Without it the first one is shown.
    void Choose(const std::string& name);
    void accept() override;

 private:
    QWidget* BuildShared();
    void ShowSource();
    void ShowShared();
    void AskForShared();
    void TestShared();
    void ChangeShared();
    bool IsSharedComplete();
    ReportSource Typed() const;
    void Lock();

    DesignModel& m_model;
    PartForm* m_part;
    SourceForm* m_form;
    QCheckBox* m_isShared;
    QWidget* m_shared = nullptr;
    QLineEdit* m_reference = nullptr;
    Note *m_referenceNote = nullptr, *m_result = nullptr;
    // What is shown, as it is in the report, and as the controls say it before anybody has changed them.
    ReportSource m_old, m_shown;
    bool m_isShowing = false;
};

}  // namespace designer
