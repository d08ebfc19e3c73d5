// SPDX-License-Identifier: GPL-3.0-or-later
// The page that gives columns of the query to the parts of the layout.
#pragma once

#include <QWizardPage>
#include <array>

#include "designer/wizards/column_list.h"
#include "designer/wizards/report_draft.h"

class QLabel;
class QPushButton;

namespace designer {

class Note;

class FieldsPage : public QWizardPage {
    Q_OBJECT
 public:
    explicit FieldsPage(ReportDraft& draft);
    void initializePage() override;
    void cleanupPage() override {}  // the lists stay on the way back
    bool validatePage() override;

 private:
    static constexpr std::size_t PartCount = 3;
    struct Part {  // of the layout; what it has not is hidden
        QWidget* box = nullptr;
        QLabel* label = nullptr;
        QPushButton* add = nullptr;
        ColumnList* list = nullptr;
        std::vector<std::string> NewReport::*member = nullptr;
    };
    void BuildPart(std::size_t index);
    void ShowLayout();
    void KeepKnownColumns();
    void Take(std::size_t index, const std::vector<std::string>& columns, int row);
    void TakeDrop(std::size_t index, ColumnList* from, const std::vector<std::string>& columns, int row);
    bool MayTake(const Part& part, const std::string& column);
    const ReportColumn* ColumnNamed(const std::string& name) const;

    ReportDraft& m_draft;
    ColumnList* m_all = nullptr;
    std::array<Part, PartCount> m_parts;
    Note* m_note = nullptr;
    // What the lists were filled for.
    std::vector<std::string> m_columns;
    ReportLayout m_layout = ReportLayout::Table;
};

}  // namespace designer
