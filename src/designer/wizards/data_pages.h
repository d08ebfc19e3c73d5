// SPDX-License-Identifier: GPL-3.0-or-later
// The pages that say where the rows come from.
#pragma once

#include <QWizardPage>

#include "designer/wizards/report_draft.h"

namespace designer {

class QueryForm;
class SourceForm;

class DataSourcePage : public QWizardPage {
    Q_OBJECT
 public:
    explicit DataSourcePage(ReportDraft& draft);
    SourceForm& Form() { return *m_form; }
    bool validatePage() override;

 private:
    ReportDraft& m_draft;
    SourceForm* m_form;
};

class QueryPage : public QWizardPage {
    Q_OBJECT
 public:
    explicit QueryPage(ReportDraft& draft);
    void initializePage() override;
    void cleanupPage() override {}  // a query that was typed stays on the way back
    bool validatePage() override;

 private:
    ReportDraft& m_draft;
    QueryForm* m_form;
};

}  // namespace designer
