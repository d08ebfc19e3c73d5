// SPDX-License-Identifier: GPL-3.0-or-later
// The wizard that makes a report from data: source, rows, layout, columns, look.
#pragma once

#include <QWizard>

#include "designer/wizards/report_draft.h"

namespace designer {

class NewReportWizard : public QWizard {
    Q_OBJECT
 public:
    explicit NewReportWizard(QWidget* parent = nullptr);
    // Returns the text of the report that was made, after the wizard was accepted. Raises RuntimeError as
    // NewReportText.
    std::string Text() const { return NewReportText(m_draft.report); }
    const ReportDraft& Draft() const { return m_draft; }

 private:
    ReportDraft m_draft;
};

}  // namespace designer
