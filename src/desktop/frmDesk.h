// SPDX-License-Identifier: GPL-3.0-or-later
// A Desktop window: the tree of all folders on the left, the folders, schedules and packages of one place on
// the right, the toolbar at the top. The caption is the name of the place and is also data: schedules are
// looked up in the folder that it names.
//
// Items and rows are connected by text and key only. The Icon gives the kind of an item (DeskItems.h).
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <string>

#include "platform/controls/items/list_view.h"
#include "platform/controls/items/tree_view.h"
#include "platform/controls/toolbar.h"
#include "shared/Frame.h"

namespace Ui {
class frmDesk;
}

// Numbers of toolbar buttons that are switched on and off.
inline constexpr int NewPackageButton = 3, PreviewButton = 5, DeleteButton = 6, DesignButton = 9;

class frmDesk : public QWidget, public DeskWindow {
    Q_OBJECT
 public:
    explicit frmDesk(QWidget* parent = nullptr);
    ~frmDesk() override;
    // Returns a further window that is never shown and has no slot. The first call makes and loads it.
    static frmDesk& DefaultInstance();

    ToolBar* Toolbar1;
    TreeView* tvwFolder;
    ListView* lsvDesk;
    std::string Tag;  // the number of the window's slot

    // Shows the place CurrentFolderID. If the database cannot be read, a box says so, a missing file is made
    // from the blank database, and reading starts again, without a limit. Other errors are shown and the load
    // continues after them.
    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void Form_Resize();
    void Form_KeyDown(int keyCode);

    void BuildTree();  // three levels of folders below the root
    void AddChildren(const std::string& parentID, const std::string& parentKey);
    // Fills the newest window with the reports of the package that `key` names.
    void OpenPackage(const std::string& key);

    // DeskWindow
    std::string Caption() const override;
    void ListMousePointer(int pointer) override;
    std::string SelectedText() const override;
    std::string SelectedKey() const override;
    void ComAction(int command) override;
    void RefreshList(const std::string& folderName, const std::string& folderID) override;
    void AddBatches() override;
    void EnableButton(int index, bool enabled) override;
    void EnableForm(bool enabled) override;

    void tvwFolder_Click();
    void tvwFolder_KeyDown(int keyCode) { Form_KeyDown(keyCode); }
    void lsvDesk_Click();
    void lsvDesk_Deselected();
    void lsvDesk_DblClick();
    void lsvDesk_MouseUp(int button, QPoint place);
    void lsvDesk_ColumnClick(int header);
    void lsvDesk_AfterLabelEdit(int& cancel, std::string& newString);
    void lsvDesk_KeyDown(int keyCode) { Form_KeyDown(keyCode); }
    void Toolbar1_ButtonClick(int index);

 protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void BuildToolbar();
    const frmDesk* ReachedByCommands() const;
    void ShowButtons();
    void SetFirstSize();
    void ShowWithoutStore();
    void AddRoot();
    bool RunCommand(int command);  // returns false if the command stopped early; the hourglass then stays
    // Returns true if a folder may have this name. Otherwise shows the box for it.
    static bool IsNameFree(const std::string& name);
    bool NewFolder();
    bool Preview();
    bool Delete();
    void DeleteFolder(ListItem& item);
    void DeleteReport(ListItem& item);
    bool RenameFolder(const std::string& oldName, const std::string& newName);
    void RenameSchedule(const std::string& oldTitle, const std::string& newTitle);
    frmDesk& OpenNext();  // opens one more window in the frame of this one
    void OpenFolder(const ListItem& item);
    void OpenPackageWindow(const ListItem& item);

    std::unique_ptr<Ui::frmDesk> m_ui;
    bool m_preview = false, m_design = false;  // whether the last selected item has made their buttons open
    QPointer<QWidget> m_focus;                 // while the form is disabled: what it is to go back to
};
