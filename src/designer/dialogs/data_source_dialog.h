// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that changes a data source of the report, or makes one. OK is one step of the document.
#pragma once

#include <QDialog>

#include "designer/dialogs/logons.h"
#include "designer/model/design_model.h"

namespace designer {

class PartForm;
class SourceForm;

class DataSourceDialog : public QDialog {
    Q_OBJECT
 public:
    // Both must live as long as the dialog. A logon that the report does not keep goes into `logons`.
    DataSourceDialog(DesignModel& model, Logons& logons, QWidget* parent = nullptr);
    void accept() override;

 private:
    void ShowSource();

    DesignModel& m_model;
    Logons& m_logons;
    PartForm* m_part;
    SourceForm* m_form;
    bool m_isShowing = false;
};

}  // namespace designer
