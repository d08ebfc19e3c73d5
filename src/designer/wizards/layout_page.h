// SPDX-License-Identifier: GPL-3.0-or-later
// The page that asks how the rows are arranged.
#pragma once

#include <QWizardPage>

#include "designer/wizards/report_draft.h"

class QButtonGroup;

namespace designer {

class LayoutPage : public QWizardPage {
    Q_OBJECT
 public:
    explicit LayoutPage(ReportDraft& draft);
    bool validatePage() override;

 private:
    ReportDraft& m_draft;
    QButtonGroup* m_choices;
};

}  // namespace designer
