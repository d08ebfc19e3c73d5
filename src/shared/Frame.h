// What lower rooms ask of the windows above them, so that none of them includes a form.
#pragma once

#include <string>

class CommonDialog;
class QWidget;

// The main window. In the scheduler it is hidden and only its timer and tray icon live.
class MainFrame {
 public:
    virtual ~MainFrame() = default;
    virtual void EnableTimer1(bool enabled) = 0;
    virtual void HideWindow() = 0;
    // The pointer over all windows: 0 the default, 11 the hourglass.
    virtual void ScreenMousePointer(int pointer) = 0;
    // The common dialog that the forms share: what one of them sets the next one finds.
    virtual CommonDialog* cd() = 0;
    // Makes a form a child window, not on the screen yet. It is destroyed when it is closed.
    virtual void AddChild(QWidget& form) = 0;

    // Its menus, by the names of menus and entries.
    virtual void ClickEntry(const std::string& entry) = 0;  // runs its handler; nothing when it has none
    virtual void EntryCaption(const std::string& entry, const std::string& caption) = 0;
    virtual void EntryVisible(const std::string& entry, bool visible) = 0;
    virtual void EntryEnabled(const std::string& entry, bool enabled) = 0;
    virtual void PopupMenu(const std::string& menu) = 0;                // at the pointer
    virtual void PopupMenu(const std::string& menu, int x, int y) = 0;  // at a place of the screen
};

// A Desktop window.
class DeskWindow {
 public:
    virtual ~DeskWindow() = default;
    virtual std::string Caption() const = 0;
    virtual void ListMousePointer(int pointer) = 0;  // of lsvDesk
    // Of the item that is selected in lsvDesk; 91 when none is.
    virtual std::string SelectedText() const = 0;
    virtual std::string SelectedKey() const = 0;
    // The command of toolbar button `command` - 1.
    virtual void ComAction(int command) = 0;
    // Shows a folder: its name becomes the caption. The packages of the root are left out.
    virtual void RefreshList(const std::string& folderName, const std::string& folderID) = 0;
    virtual void AddBatches() = 0;                           // every package, behind what is listed
    virtual void EnableButton(int index, bool enabled) = 0;  // of Toolbar1, from 1
    virtual void EnableForm(bool enabled) = 0;
};
