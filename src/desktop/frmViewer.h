// The Schedule History window: all schedules by their frequency, each with its next run and its last ten
// runs, and on a second tab the packages with their reports. It shows what it read when it was filled: nobody
// tells it of changes.
//
// What the nodes are is told by HistoryNodes.h. The key of a package's report is "<ReportTitle>^<number>".
#pragma once

#include <QWidget>
#include <memory>
#include <string>

#include "platform/controls/items/tree_view.h"
#include "platform/controls/tab_strip.h"

namespace Ui {
class frmViewer;
}

class frmViewer : public QWidget {
    Q_OBJECT
 public:
    // The one window, a child window of the frame. The first touch makes, loads and shows it; so does the
    // first one behind its end.
    static frmViewer& Instance();
    ~frmViewer() override;

    TabStrip* vwTab;  // 1 the schedules, 2 the packages
    TreeView* tvReports;
    TreeView* tvBatch;  // filled by a click on its tab only

    void ShowForm();  // in front of the others, as it stands

    // Fills tvReports, now or anew. Errors are shown and end it; what was read until then stands.
    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void Form_KeyDown(int keyCode);
    static void ExpandNode(Node& node);  // with all below it

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
