// SPDX-License-Identifier: GPL-3.0-or-later
// "Browse for Folder...": the user chooses one of the Desktop's folders by its name. The Desktop itself
// cannot be chosen.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "platform/controls/editable_text.h"

namespace Ui {
class frmFolders;
}

class frmFolders : public QDialog {
    Q_OBJECT
 public:
    // Shows the folders until the user chooses one, which writes its name to `cmbFolder`, or cancels.
    static void ShowModal(EditableText& cmbFolder);

    explicit frmFolders(EditableText& cmbFolder, QWidget* parent = nullptr);
    ~frmFolders() override;

    void Form_Load();  // shows three levels of folders
    void AddChildren(const std::string& parentID, const std::string& parentKey);
    void tvwFolder_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

 private:
    std::unique_ptr<Ui::frmFolders> m_ui;
    EditableText& m_cmbFolder;
};
