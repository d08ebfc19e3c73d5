// SPDX-License-Identifier: GPL-3.0-or-later
// The Schedule History window inside the real frame, driven as a user drives it.
#pragma once

#include "desk_fixture.h"
#include "desktop/frmViewer.h"

class HistoryTest : public DeskTest {
 protected:
    void TearDown() override;

    // Opens the window with the menu of the frame.
    frmViewer& Open();
    // Returns the window on the screen, or null.
    frmViewer* OnScreen();
    static void CloseViewer(frmViewer& viewer);

    // Add a schedule and return its key; add a run of it. A null `error` stores Null.
    int Schedule(const std::string& title, const std::string& frequency = "Daily");
    void Run(int schedule, const std::string& lastRun, const std::string& status = "Success",
             const std::string& error = "None");

    // "Text" of every node after one dot for each level, in the order of the collection.
    static Texts Nodes(TreeView& tree);
    static Texts Keys(TreeView& tree);
    static std::vector<int> Images(TreeView& tree);
    static Texts Collapsed(TreeView& tree);  // texts of the closed nodes that have children

    static Node& Find(TreeView& tree, const std::string& text);
    static void Click(TreeView& tree, const std::string& text, Qt::MouseButton button = Qt::LeftButton);
    static void DoubleClick(TreeView& tree, const std::string& text);
    static void ClickTab(frmViewer& viewer, int tab);  // from 1
    // Returns the popup that is shown, or an empty text.
    std::string Popup();
    Texts Shown(const std::string& menu);  // captions
    // Chooses an entry of the shown popup, as an event of its own.
    void Choose(const char* entry);
    void SelectAndChoose(TreeView& tree, const std::string& text, const char* entry);
};
