// SPDX-License-Identifier: GPL-3.0-or-later
// The controls that say where a report's data is: the provider, its file or server, the logon, and a test.
#pragma once

#include <QWidget>
#include <vector>

#include "designer/dialogs/source_kinds.h"
#include "rdl/api/query_rows.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;

namespace designer {

class Note;

class SourceForm : public QWidget {
    Q_OBJECT
 public:
    explicit SourceForm(QWidget* parent = nullptr);

    const SourceKind& Kind() const;
    SourceFields Fields() const;
    // Returns a request without a query, with the user and the password whether the report keeps them or not.
    rdl::QueryRequest Request() const;
    // Looks whether something is missing, and says so at its control.
    bool IsComplete();
    // Looks whether the source can be read, and shows the answer.
    bool Works();
    // Selects the file, and the provider that its extension asks for.
    void SetFile(const QString& file);

 signals:
    void Changed();

 private:
    QLineEdit* AddLine(const QString& label, const char* name, QWidget* beside = nullptr);
    void BuildFileRow();
    void BuildLogonRows();
    void ShowKind();
    void AskForFile();
    void ClearNotes();
    bool Complain(QLineEdit& line, const QString& text);

    QFormLayout* m_form = nullptr;
    QComboBox* m_kind = nullptr;
    QWidget* m_fileRow = nullptr;
    QLineEdit *m_file = nullptr, *m_server = nullptr, *m_port = nullptr, *m_database = nullptr;
    QLineEdit *m_text = nullptr, *m_user = nullptr, *m_password = nullptr;
    QCheckBox* m_keeps = nullptr;
    QPushButton* m_test = nullptr;
    Note* m_result = nullptr;
    std::vector<std::pair<QLineEdit*, Note*>> m_notes;
};

}  // namespace designer
