// SPDX-License-Identifier: GPL-3.0-or-later
// The controls that say where a report's data is: the provider, its file or server, the logon, and a test.
#pragma once

#include <QWidget>
#include <filesystem>
#include <optional>
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

    // Files are named as a report in this folder finds them, and may be missing. Without a folder names are
    // absolute.
    void SetFolder(const std::filesystem::path& folder);
    // Shows a source. Its connect string is one line if it has parts that no other line shows.
    void SetSource(const std::string& provider, const std::string& connectString);
    // A logon that the connect string does not have.
    void SetLogon(const std::string& user, const std::string& password);

    const SourceKind& Kind() const;
    std::string Provider() const;
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
    void BuildServerRows();
    enum class Beside { Nothing, Button };
    QLineEdit* AddLine(const QString& label, const char* name, Beside beside = Beside::Nothing);
    void BuildFileRow();
    void BuildLogonRows();
    SourceShape Shape() const;
    std::filesystem::path WholeFile() const;  // empty if none is typed
    void ShowKind();
    void ShowAsText(bool isText);
    void AskForFile();
    void ClearNotes();
    bool Complain(QLineEdit& line, const QString& text);

    QFormLayout* m_form = nullptr;
    std::optional<std::filesystem::path> m_folder;
    QComboBox* m_kind = nullptr;
    QLineEdit* m_provider = nullptr;
    QWidget* m_fileRow = nullptr;
    QLineEdit *m_file = nullptr, *m_server = nullptr, *m_port = nullptr, *m_database = nullptr;
    QLineEdit *m_text = nullptr, *m_user = nullptr, *m_password = nullptr;
    QCheckBox *m_asText = nullptr, *m_keeps = nullptr;
    QPushButton* m_test = nullptr;
    Note* m_result = nullptr;
    std::vector<std::pair<QLineEdit*, Note*>> m_notes;
};

}  // namespace designer
