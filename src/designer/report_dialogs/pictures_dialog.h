// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the pictures that the report embeds: what they show, where they are used, and their names;
// they are added from files, saved as files and removed. OK is one step of the document.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/model/embedded_pictures.h"

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace designer {

class Note;

class PicturesDialog : public QDialog {
    Q_OBJECT
 public:
    // Shows the picture of this name first. The model must live as long as the dialog.
    PicturesDialog(DesignModel& model, const std::string& name, QWidget* parent = nullptr);
    void accept() override;
    // Adds the picture of a file. Returns false after a message if the file is no picture.
    bool AddFile(const QString& file);
    // Asks for a file, and adds its picture.
    void Add();

 private:
    void BuildList(QBoxLayout& side);
    void BuildPicture(QBoxLayout& side);
    void RemoveCurrent();
    void SaveCurrent();
    void ShowCurrent();
    void TakeName();
    QPushButton* AddButton(QBoxLayout& row, const QString& text, const char* name);
    std::string BytesOf(const EmbeddedPicture& picture) const;
    QString UseOf(const EmbeddedPicture& picture) const;
    std::string FreeName(const QString& file) const;
    EmbeddedPicture* Current();

    DesignModel& m_model;
    const std::vector<EmbeddedPicture> m_old;
    std::vector<EmbeddedPicture> m_pictures;
    QListWidget* m_list = nullptr;
    QPushButton *m_remove = nullptr, *m_save = nullptr;
    QLineEdit* m_name = nullptr;
    QLabel *m_picture = nullptr, *m_about = nullptr;
    Note *m_note = nullptr, *m_nameNote = nullptr;
};

}  // namespace designer
