// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that changes the query in the file of a shared data set, NAME.rsd. OK writes the file whole or
// not at all.
#pragma once

#include <QDialog>

#include "designer/model/shared_file.h"

class QPlainTextEdit;

namespace designer {

class Note;

class SharedQueryDialog : public QDialog {
    Q_OBJECT
 public:
    // Raises as SharedFile.
    explicit SharedQueryDialog(std::filesystem::path file, QWidget* parent = nullptr);
    void accept() override;

 private:
    SharedFile m_file;
    QPlainTextEdit* m_query;
    Note* m_note;
};

}  // namespace designer
