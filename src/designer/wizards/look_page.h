// SPDX-License-Identifier: GPL-3.0-or-later
// The page for title, chart, theme and paper, with a picture of the result.
#pragma once

#include <QTimer>
#include <QWizardPage>

#include "designer/wizards/report_draft.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QListWidget;

namespace designer {

class Note;
class ReportPicture;

class LookPage : public QWizardPage {
    Q_OBJECT
 public:
    explicit LookPage(ReportDraft& draft);
    void initializePage() override;
    void cleanupPage() override {}  // what was chosen stays on the way back
    bool validatePage() override;

 private:
    void BuildForm();
    void FillThemes();
    void Take();  // into the draft
    void ShowPicture();

    ReportDraft& m_draft;
    QFormLayout* m_form = nullptr;
    QLineEdit* m_title = nullptr;
    Note* m_titleNote = nullptr;
    QComboBox *m_chart = nullptr, *m_paper = nullptr;
    QListWidget* m_themes = nullptr;
    QCheckBox* m_landscape = nullptr;
    Note* m_note = nullptr;
    ReportPicture* m_picture = nullptr;
    QTimer m_pause;  // while the user types
    bool m_hasOwnTitle = false;
};

}  // namespace designer
