// SPDX-License-Identifier: GPL-3.0-or-later
#include "history_fixture.h"

#include "platform/base/convert.h"

// A test may have set a frame of its own before this one.
void HistoryTest::TearDown() {
    Global::Frame = &frame;
    DeskTest::TearDown();
}

frmViewer& HistoryTest::Open() {
    ClickEntry("mnuView");
    QApplication::processEvents();
    frmViewer* const viewer = OnScreen();
    if (viewer == nullptr) {
        throw std::runtime_error("no history window");
    }
    return *viewer;
}

frmViewer* HistoryTest::OnScreen() {
    for (QMdiSubWindow* window : frame.Children().subWindowList()) {
        auto* viewer = qobject_cast<frmViewer*>(window->widget());
        if (viewer != nullptr && window->isVisible()) {
            return viewer;
        }
    }
    return nullptr;
}

void HistoryTest::CloseViewer(frmViewer& viewer) {
    viewer.parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

int HistoryTest::Schedule(const std::string& title, const std::string& frequency) {
    fakes::Insert(database, {.title = title, .runAt = "06:30", .frequency = frequency});
    return CLng(Variant(database.Rows("select max(ReportID) from ReportScheduler")[0]));
}

void HistoryTest::Run(int schedule, const std::string& lastRun, const std::string& status,
                      const std::string& error) {
    database.Run("insert into ReportHistory(ReportID,LastRun,Status,ErrMsg) values(" +
                 std::to_string(schedule) + ",'" + lastRun + "','" + status + "','" + error + "')");
}

Texts HistoryTest::Nodes(TreeView& tree) {
    Texts texts;
    for (int index = 1; index <= tree.Nodes().Count(); ++index) {
        const Node& node = tree.Nodes()(index);
        std::string dots;
        for (const Node* above = node.Parent(); above != nullptr; above = above->Parent()) {
            dots += ".";
        }
        texts.push_back(dots + node.Text());
    }
    return texts;
}

Texts HistoryTest::Keys(TreeView& tree) {
    Texts keys;
    for (int index = 1; index <= tree.Nodes().Count(); ++index) {
        keys.push_back(tree.Nodes()(index).Key);
    }
    return keys;
}

std::vector<int> HistoryTest::Images(TreeView& tree) {
    std::vector<int> images;
    for (int index = 1; index <= tree.Nodes().Count(); ++index) {
        images.push_back(tree.Nodes()(index).Image());
    }
    return images;
}

Texts HistoryTest::Collapsed(TreeView& tree) {
    Texts texts;
    for (int index = 1; index <= tree.Nodes().Count(); ++index) {
        const Node& node = tree.Nodes()(index);
        if (node.Children() > 0 && !node.Expanded()) {
            texts.push_back(node.Text());
        }
    }
    return texts;
}

Node& HistoryTest::Find(TreeView& tree, const std::string& text) {
    for (int index = 1; index <= tree.Nodes().Count(); ++index) {
        if (tree.Nodes()(index).Text() == text) {
            return tree.Nodes()(index);
        }
    }
    throw std::runtime_error("no node " + text);
}

void HistoryTest::Click(TreeView& tree, const std::string& text, Qt::MouseButton button) {
    Node& node = Find(tree, text);
    tree.scrollToItem(&node);
    QTest::mouseClick(tree.viewport(), button, {}, tree.visualItemRect(&node).center());
    QApplication::processEvents();
}

void HistoryTest::DoubleClick(TreeView& tree, const std::string& text) {
    Click(tree, text);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(&Find(tree, text)).center());
    QApplication::processEvents();
}

void HistoryTest::ClickTab(frmViewer& viewer, int tab) {
    QTest::mouseClick(viewer.vwTab, Qt::LeftButton, {}, viewer.vwTab->tabRect(tab - 1).center());
    QApplication::processEvents();
}

std::string HistoryTest::Popup() {
    for (const QMenu* menu : frame.findChildren<QMenu*>()) {
        if (menu->isVisible()) {
            return menu->objectName().toStdString();
        }
    }
    return {};
}

Texts HistoryTest::Shown(const std::string& menu) {
    Texts captions;
    for (const QAction* entry : frame.Menu(menu)->actions()) {
        if (entry->isVisible()) {
            captions.push_back(entry->isSeparator() ? "-" : entry->text().toStdString());
        }
    }
    return captions;
}

void HistoryTest::Choose(const char* entry) {
    QMenu* const menu = frame.Menu(Popup());
    ASSERT_NE(menu, nullptr);
    QAction* const action = frame.Entry(entry);
    EXPECT_TRUE(action->isEnabled() && action->isVisible()) << entry;
    const QPoint place = menu->actionGeometry(action).center();
    menu->close();
    ASSERT_FALSE(place.isNull());
    QMetaObject::invokeMethod(action, "trigger", Qt::QueuedConnection);
    QApplication::processEvents();
}

void HistoryTest::SelectAndChoose(TreeView& tree, const std::string& text, const char* entry) {
    Click(tree, text, Qt::RightButton);
    Choose(entry);
}
