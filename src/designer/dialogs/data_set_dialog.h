// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that changes a data set of the report, or makes one: its query, the first rows, and the fields
// that are taken from the columns. OK is one step of the document.
#pragma once

#include <QDialog>

#include "designer/dialogs/logons.h"
#include "designer/model/design_model.h"
#include "designer/model/report_data.h"

class QCheckBox;
class QComboBox;

namespace designer {

class Note;
class PartForm;
class QueryForm;

class DataSetDialog : public QDialog {
    Q_OBJECT
 public:
    // Both must live as long as the dialog.
    DataSetDialog(DesignModel& model, const Logons& logons, QWidget* parent = nullptr);
    void accept() override;

 private:
    void BuildForm();
    void ShowSet();
    void ShowSource();
    bool TakeFields(ReportSet& set);

    DesignModel& m_model;
    const Logons& m_logons;
    const std::vector<ReportSource> m_sources;
    PartForm* m_part;
    QComboBox* m_source = nullptr;
    Note* m_sourceNote = nullptr;
    QueryForm* m_query = nullptr;
    QCheckBox* m_takesFields = nullptr;
    ReportSet m_old;  // what is shown, as it is in the report
    bool m_isShowing = false;
};

}  // namespace designer
