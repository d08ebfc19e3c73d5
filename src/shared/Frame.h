// SPDX-License-Identifier: GPL-3.0-or-later
// The interfaces of windows that lower rooms call, so that none of them includes a form.
#pragma once

#include <optional>
#include <string>

class CommonDialog;
class QWidget;

// The main window. In the scheduler it is hidden and only its timer and tray icon live.
class MainFrame {
 public:
    virtual ~MainFrame() = default;
    virtual void EnableTimer1(bool enabled) = 0;
    virtual void HideWindow() = 0;
    // Sets the pointer over all windows: 0 is the default, 11 the hourglass.
    virtual void ScreenMousePointer(int pointer) = 0;
    // Returns the common dialog that the forms share: a value that one form sets is still there for the next.
    // The frame owns it.
    virtual CommonDialog* cd() = 0;
    // Wraps a form in a child window and does not show it yet. The child window owns the form and is
    // destroyed when it is closed.
    virtual void AddChild(QWidget& form) = 0;

    // Its menus, by the names of menus and entries. An unknown name is ignored.
    virtual void ClickEntry(const std::string& entry) = 0;  // runs its handler, if it has one
    virtual void EntryCaption(const std::string& entry, const std::string& caption) = 0;
    virtual void EntryVisible(const std::string& entry, bool visible) = 0;
    virtual void EntryEnabled(const std::string& entry, bool enabled) = 0;
    virtual void PopupMenu(const std::string& menu) = 0;                // at the pointer
    virtual void PopupMenu(const std::string& menu, int x, int y) = 0;  // in pixels of the screen
};

// Commands of a Desktop window that code runs: the number of a toolbar button plus 1. SeparatorCommand does
// nothing.
inline constexpr int NewReportCommand = 3, NewPackageCommand = 4, SeparatorCommand = 5, PreviewCommand = 6,
                     DeleteCommand = 7;

// A Desktop window.
class DeskWindow {
 public:
    virtual ~DeskWindow() = default;
    virtual std::string Caption() const = 0;
    virtual void ListMousePointer(int pointer) = 0;  // pointer of lsvDesk, as ScreenMousePointer
    // Text and key of the item that is selected in lsvDesk. Raise 91 if no item is selected.
    virtual std::string SelectedText() const = 0;
    virtual std::string SelectedKey() const = 0;
    // Runs the command of toolbar button `command` - 1 (commands 1 to 12, see DeskCommands.cpp).
    virtual void ComAction(int command) = 0;
    // Lists a folder. Its name becomes the window's caption. Packages are not listed: AddBatches adds them.
    virtual void RefreshList(const std::string& folderName, const std::string& folderID) = 0;
    virtual void AddBatches() = 0;                           // appends every package to the list
    virtual void EnableButton(int index, bool enabled) = 0;  // button of Toolbar1, from 1
    virtual void EnableForm(bool enabled) = 0;
};

// The Schedule History window.
class HistoryFrame {
 public:
    virtual ~HistoryFrame() = default;
    // Returns the text of the schedule that the selected node is or belongs to, "5: Sales"; nullopt if the
    // node has nodes below it. Raises 91 if no node is selected.
    virtual std::optional<std::string> SelectedSchedule() const = 0;
    // Reads schedules and runs again. An error is shown and ends the reading; the nodes made before it stay.
    virtual void Form_Load() = 0;
};
