// SPDX-License-Identifier: GPL-3.0-or-later
// The Schedule History window. Its first tab lists all schedules by frequency, each with its next run and its
// last ten runs. Its second tab lists the packages with their reports. The window shows what it read when it
// was filled; later changes do not appear.
//
// HistoryNodes.h gives the kinds of nodes. The key of a package's report is "<ReportTitle>^<number>".
#pragma once

#include <QWidget>
#include <memory>
#include <string>

#include "platform/controls/items/tree_view.h"
#include "platform/controls/tab_strip.h"
#include "shared/Frame.h"

namespace Ui {
class frmViewer;
}

class frmViewer : public QWidget, public HistoryFrame {
    Q_OBJECT
 public:
    // Returns the one window, a child window of the frame. The first call, and the first call after the
    // window was closed, makes, loads and shows it.
    static frmViewer& Instance();
    ~frmViewer() override;

    TabStrip* vwTab;  // 1 the schedules, 2 the packages
    TreeView* tvReports;
    TreeView* tvBatch;  // filled only by a click on its tab

    void ShowForm();  // brings the window to the front, unchanged

    // Fills tvReports, replacing what it holds. An error is shown and ends the filling; the nodes made before
    // it stay.
    void Form_Load() override;
    std::optional<std::string> SelectedSchedule() const override;
    void Form_Activate();
    void Form_Unload();
    static constexpr int RefreshKey = 116;  // F5
    void Form_KeyDown(int keyCode);
    static void ExpandNode(Node& node);  // with all nodes below it

    // Fills tvBatch when its tab is shown. Errors pass to the caller.
    void vwTab_Click();
    void tvReports_DblClick();
    void tvReports_KeyDown(int keyCode);
    void tvReports_MouseUp(int button, QPoint place);
    void tvBatch_KeyDown(int keyCode);
    void tvBatch_MouseUp(int button, QPoint place);

 protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    explicit frmViewer(QWidget* parent = nullptr);
    void ConnectControls();
    TreeView& ShownTree();
    void ShowFirst();
    void ExpandShown();
    void FillReports();
    void AddSchedules(const std::string& frequency, const std::string& groupKey);
    void AddRuns(const std::string& reportID, const std::string& scheduleKey);
    void FillBatch();

    std::unique_ptr<Ui::frmViewer> m_ui;
    bool m_shown = false, m_closed = false;
};
