// SPDX-License-Identifier: GPL-3.0-or-later
// The choice of a shared data set: a file NAME.rsd, whose query and parameters are shown.
#pragma once

#include <QWidget>
#include <filesystem>
#include <optional>
#include <string>

#include "rdl/api/query_rows.h"

class QLabel;
class QLineEdit;

namespace designer {

class Note;

class SharedSetForm : public QWidget {
    Q_OBJECT
 public:
    // Names start at the folder of the report.
    explicit SharedSetForm(std::filesystem::path folder, QWidget* parent = nullptr);

    void SetReference(const std::string& reference);
    std::string Reference() const;  // trimmed
    // Reads the file and says what it has, or what is wrong with it; nothing without a name.
    std::optional<rdl::SharedSetText> Read();
    // Says so if there is no name.
    bool IsComplete();

 signals:
    void Edited();  // the name, while it is typed
    void Chosen();  // another file

 private:
    void AskForFile();
    void ChangeQuery();

    const std::filesystem::path m_folder;
    QLineEdit* m_reference;
    Note* m_note = nullptr;
    QLabel* m_contents;
    std::string m_chosen;
};

}  // namespace designer
