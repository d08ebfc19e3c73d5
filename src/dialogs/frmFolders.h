// "Browse for Folder...": one of the Desktop's folders is chosen by its name. The Desktop itself is none.
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
    // Shows the folders until one is chosen, whose name is written to the box, or the choice is cancelled.
    static void ShowModal(EditableText& cmbFolder);

    explicit frmFolders(EditableText& cmbFolder, QWidget* parent = nullptr);
    ~frmFolders() override;

    void Form_Load();  // three levels of folders, and no more
    void AddChildren(const std::string& parentID, const std::string& parentKey);
    void tvwFolder_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

 private:
    std::unique_ptr<Ui::frmFolders> m_ui;
    EditableText& m_cmbFolder;
};
