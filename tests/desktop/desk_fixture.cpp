// SPDX-License-Identifier: GPL-3.0-or-later
#include "desk_fixture.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QToolButton>

#include "platform/base/convert.h"
#include "platform/contracts/prompts.h"

std::string DeskPrompts::Input(const std::string& prompt, const std::string& title,
                               const std::string& preset) {
    asked.push_back({prompt, title, preset});
    return FakePrompts::Input(prompt, title, preset);
}

fakes::Box EndBox(int number, const std::string& description) {
    return {"Run-time error \"" + std::to_string(number) + "\":\n\n" + description, vbCritical,
            "Oxbow Courier"};
}

fakes::Box ErrorBox(int number, const std::string& description) {
    return {"Oxbow Courier encountred an error. " + description + " [" + std::to_string(number) + "]",
            vbExclamation, "Oxbow Courier"};
}

void DeskTest::SetUp() {
    Global::DeskCount = 0;
    Global::DeskIndex = 0;
    Global::DeskWindows.clear();
    Global::CurrentFolderID.clear();
    Global::CurrentFolder.clear();
    Global::FolderClicks = 0;
    Global::Frame = &frame;
    frame.resize(1100, 800);
    frame.show();
    frame.activateWindow();
    QApplication::processEvents();
}

void DeskTest::TearDown() {
    for (QMenu* menu : frame.findChildren<QMenu*>()) {
        menu->close();
    }
    frame.Children().closeAllSubWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    frame.ScreenMousePointer(0);
}

frmDesk& DeskTest::OpenRoot() {
    ClickEntry("mnuDesktop");
    QApplication::processEvents();
    return Window(Global::DeskCount);
}

frmDesk& DeskTest::OpenWithoutSlot() {
    frmDesk& first = OpenRoot();
    frmDesk& window = OpenRoot();
    Close(first);
    Close(OpenRoot());
    return window;
}

frmDesk& DeskTest::Window(int slot) {
    return dynamic_cast<frmDesk&>(Global::DeskSlot(slot));
}

std::vector<frmDesk*> DeskTest::OnScreen() {
    std::vector<frmDesk*> windows;
    for (QMdiSubWindow* window : frame.Children().subWindowList()) {
        windows.push_back(qobject_cast<frmDesk*>(window->widget()));
    }
    return windows;
}

void DeskTest::Close(frmDesk& window) {
    window.parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

Texts DeskTest::Listed(frmDesk& window) {
    return Cells(window, 1);
}

Texts DeskTest::ListedWithIcons(frmDesk& window) {
    Texts items;
    for (int index = 1; index <= window.lsvDesk->ListItems().Count(); ++index) {
        const ListItem& item = window.lsvDesk->ListItems()(index);
        items.push_back(std::to_string(item.Icon) + " " + std::to_string(item.SmallIcon) + " " + item.Key +
                        "=" + item.Text());
    }
    return items;
}

Texts DeskTest::Cells(frmDesk& window, int columns) {
    Texts rows;
    for (int index = 1; index <= window.lsvDesk->ListItems().Count(); ++index) {
        const ListItem& item = window.lsvDesk->ListItems()(index);
        std::string row = item.Text();
        for (int column = 1; column < columns; ++column) {
            row += "|" + item.SubItems(column);
        }
        rows.push_back(row);
    }
    return rows;
}

Texts DeskTest::Headings(frmDesk& window) {
    Texts texts;
    for (int column = 1; column <= window.lsvDesk->ColumnHeaders().Count(); ++column) {
        texts.push_back(window.lsvDesk->ColumnHeaders()(column));
    }
    return texts;
}

Texts DeskTest::Tree(frmDesk& window) {
    Texts nodes;
    for (int index = 1; index <= window.tvwFolder->Nodes().Count(); ++index) {
        const Node& node = window.tvwFolder->Nodes()(index);
        std::string dots;
        for (const Node* above = node.Parent(); above != nullptr; above = above->Parent()) {
            dots += ".";
        }
        nodes.push_back(dots + node.Text());
    }
    return nodes;
}

namespace {

// Scrolls to the item and returns its position on the screen.
QPoint PlaceOf(frmDesk& window, const std::string& text) {
    QAbstractItemView& view = *window.lsvDesk->CurrentView();
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        if (index.data().toString().toStdString() == text) {
            view.scrollTo(index);
            return view.visualRect(index).center();
        }
    }
    ADD_FAILURE() << "no item " << text;
    return {};
}

}  // namespace

void DeskTest::ClickItem(frmDesk& window, const std::string& text, Qt::MouseButton button) {
    const QPoint place = PlaceOf(window, text);
    QTest::mouseClick(window.lsvDesk->CurrentView()->viewport(), button, {}, place);
}

void DeskTest::DoubleClickItem(frmDesk& window, const std::string& text) {
    const QPoint place = PlaceOf(window, text);
    QWidget* viewport = window.lsvDesk->CurrentView()->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
    QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
    QApplication::processEvents();
}

void DeskTest::ClickNode(frmDesk& window, const std::string& text) {
    TreeView& tree = *window.tvwFolder;
    for (int index = 1; index <= tree.Nodes().Count(); ++index) {
        Node& node = tree.Nodes()(index);
        if (node.Text() == text) {
            tree.scrollToItem(&node);
            QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(&node).center());
            return;
        }
    }
    ADD_FAILURE() << "no node " << text;
}

void DeskTest::ClickBesideAll(frmDesk& window) {
    QWidget* viewport = window.lsvDesk->CurrentView()->viewport();
    QTest::mouseClick(viewport, Qt::LeftButton, {}, viewport->rect().bottomRight() - QPoint(2, 2));
}

void DeskTest::ClickButton(frmDesk& window, const char* caption) {
    auto* button = window.Toolbar1->findChild<QToolButton*>(caption);
    ASSERT_NE(button, nullptr) << caption;
    QTest::mouseClick(button, Qt::LeftButton);
}

bool DeskTest::ButtonEnabled(frmDesk& window, const char* caption) {
    return window.Toolbar1->findChild<QToolButton*>(caption)->isEnabled();
}

void DeskTest::Key(QWidget& widget, Qt::Key key) {
    QTest::keyClick(&widget, key);
    QApplication::processEvents();
}

QLineEdit* DeskTest::Editor(frmDesk& window) {
    const QList<QLineEdit*> editors = window.lsvDesk->findChildren<QLineEdit*>("LabelEdit");
    for (QLineEdit* editor : editors) {
        if (editor->isVisible()) {
            return editor;
        }
    }
    return nullptr;
}

void DeskTest::Rename(frmDesk& window, const std::string& text, const std::string& newText) {
    if (!window.lsvDesk->HasSelection() || window.SelectedText() != text) {
        ClickItem(window, text);
    }
    Key(*window.lsvDesk->CurrentView(), Qt::Key_F2);
    QLineEdit* editor = Editor(window);
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text().toStdString(), text);
    editor->selectAll();
    if (newText.empty()) {
        QTest::keyClick(editor, Qt::Key_Delete);
    }
    QTest::keyClicks(editor, QString::fromStdString(newText));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
}

bool DeskTest::Hourglass(frmDesk& window) {
    const bool overList = window.lsvDesk->cursor().shape() == Qt::WaitCursor;
    EXPECT_EQ(frmMain::Instance().BusyShown(), overList);
    return overList;
}

void DeskTest::ClickEntry(const char* name) {
    frame.Entry(name)->trigger();
}

void DeskTest::AddFolder(const std::string& name, int parent) {
    database.Run("insert into Folders(FolderName, Parent) values('" + name + "'," + std::to_string(parent) +
                 ")");
}

int DeskTest::AddSchedule(const std::string& title, const std::string& folder) {
    fakes::Insert(database, {.title = title});
    database.Run("update ReportScheduler set Parent='" + folder +
                 "' where ReportID=(select max(ReportID) from ReportScheduler)");
    return CLng(Variant(database.Rows("select max(ReportID) from ReportScheduler")[0]));
}

int DeskTest::AddPackage(const std::string& name, const Texts& reports) {
    database.Run("insert into ReportBatch(BatchName,Frequency,NextRunDate) values('" + name +
                 "','Weekly','2026-11-30')");
    const std::string id = database.Rows("select max(ReportID) from ReportBatch")[0];
    for (const std::string& report : reports) {
        database.Run("insert into ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat) values(" +
                     id + ",'" + report + "','Z:\\reports\\" + report + ".rpt','Acrobat Format (PDF)')");
    }
    return CLng(Variant(id));
}
