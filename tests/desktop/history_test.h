// The Schedule History window inside the real frame, driven as a user drives it.
#pragma once

#include "desk_test.h"
#include "desktop/frmViewer.h"

class HistoryTest : public DeskTest {
 protected:
    void TearDown() override;

    // By the menu of the frame.
    frmViewer& Open();
    // The one on the screen; null: none.
    frmViewer* OnScreen();
    static void CloseViewer(frmViewer& viewer);

    // A schedule, its key; and a run of it. Null as `error`: the column stays Null.
    int Schedule(const std::string& title, const std::string& frequency = "Daily");
    void Run(int schedule, const std::string& lastRun, const std::string& status = "Success",
             const std::string& error = "None");

    // "Text" of every node behind as many dots as it is levels deep, in the order of the collection.
    static Texts Nodes(TreeView& tree);
    static Texts Keys(TreeView& tree);
    static std::vector<int> Images(TreeView& tree);
    static Texts Collapsed(TreeView& tree);  // texts of the nodes with children that are closed

    static Node& Find(TreeView& tree, const std::string& text);
    static void Click(TreeView& tree, const std::string& text, Qt::MouseButton button = Qt::LeftButton);
    static void DoubleClick(TreeView& tree, const std::string& text);
    static void ClickTab(frmViewer& viewer, int tab);  // from 1
    // The popup that is on the screen; empty: none.
    std::string Popup();
    Texts Shown(const std::string& menu);  // captions
    // Chooses an entry of the popup that is on the screen, as an event of its own.
    void Choose(const char* entry);
    void SelectAndChoose(TreeView& tree, const std::string& text, const char* entry);
};
