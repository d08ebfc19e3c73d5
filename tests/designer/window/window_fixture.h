// SPDX-License-Identifier: GPL-3.0-or-later
// A window of the designer over a small report file, with what a hand does to it.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "../shown_dialog.h"
#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/model/field_drag.h"
#include "designer/window/design_window.h"
#include "support/config_home.h"
#include "support/temporary_folder.h"

namespace designer::test {

// The grid is a quarter of a centimetre. Title, Amount and Note are in the body, Page in the page footer.
inline std::string SmallReport() {
    const auto box = [](const std::string& name, const std::string& text, const std::string& place) {
        return "          <Textbox Name=\"" + name +
               "\">\n            <Paragraphs><Paragraph><TextRuns><TextRun><Value>" + text +
               "</Value></TextRun></TextRuns></Paragraph></Paragraphs>\n" + place + "          </Textbox>\n";
    };
    const auto place = [](const std::string& left, const std::string& top) {
        return "            <Top>" + top + "</Top>\n            <Left>" + left +
               "</Left>\n            <Height>1cm</Height>\n            <Width>4cm</Width>\n";
    };
    return R"(<?xml version="1.0" encoding="utf-8"?>
<!-- Kept as it is -->
<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
)" + box("Title", "Sales", place("1cm", "1cm")) +
           box("Amount", "=1+1", place("1cm", "3cm")) + box("Note", "Thanks", place("7cm", "5cm")) +
           R"(        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>16cm</Width>
      <Page>
        <PageFooter>
          <Height>2cm</Height>
          <PrintOnFirstPage>true</PrintOnFirstPage>
          <ReportItems>
)" + box("Page", "=Globals!PageNumber", place("0cm", "0cm")) +
           R"(          </ReportItems>
        </PageFooter>
        <PageHeight>29.7cm</PageHeight>
        <PageWidth>21cm</PageWidth>
      </Page>
    </ReportSection>
  </ReportSections>
</Report>
)";
}

// The value of a text box with one run.
inline constexpr const char* RunValue = "Paragraphs/Paragraph/TextRuns/TextRun/Value";

// Drags the data over the widget and drops it there. Returns whether the widget takes it at that place.
inline bool DropOn(QWidget& widget, const QMimeData& data, QPoint at) {
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&widget, &enter);
    QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&widget, &move);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&widget, &drop);
    return enter.isAccepted() && move.isAccepted();
}

// Selects characters of an open text.
inline void Mark(QTextEdit& editor, int from, int to) {
    QTextCursor cursor = editor.textCursor();
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    editor.setTextCursor(cursor);
}

class WindowTest : public testing::Test {
 protected:
    explicit WindowTest(const std::string& bytes = SmallReport()) {
        setenv("XDG_STATE_HOME", (m_home / "state").c_str(), 1);
        WriteBytes(File(), bytes);
        m_window = new DesignWindow;
        m_window->resize(1200, 900);
        m_window->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_window));
        EXPECT_TRUE(m_window->OpenFile(File()));
        Settle();
    }
    ~WindowTest() override {
        delete m_window;
        unsetenv("XDG_STATE_HOME");
    }

    std::filesystem::path File() const { return m_home / "sales.rdl"; }
    std::string Written() const { return ReadBytes(File()); }
    static void Settle() {
        for (int i = 0; i < 10; ++i) {
            QCoreApplication::processEvents();
        }
    }

    DesignModel& Model() { return m_window->Model(); }
    DesignCanvas& Canvas() { return m_window->Canvas(); }
    template <typename T = QWidget>
    T& Find(const char* name) {
        T* found = m_window->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    ElementId Id(const std::string& name) {
        const auto& items = Model().Items().items;
        const auto found = std::find_if(items.begin(), items.end(),
                                        [&](const ReportItem& item) { return item.name == name; });
        return found == items.end() ? NoElement : found->id;
    }
    std::string Text(const std::string& name, const char* path) {
        return Model().Source().TextAt(Id(name), path).value_or("-");
    }
    std::string Value(const std::string& name) { return Text(name, RunValue); }
    std::string Corner(const std::string& name) { return Text(name, "Left") + " " + Text(name, "Top"); }
    std::string Size(const std::string& name) { return Text(name, "Width") + " " + Text(name, "Height"); }
    std::string Selected() {
        std::string names;
        for (const ElementId id : Model().Selection()) {
            const ReportItem* item = Model().Item(id);
            names += (names.empty() ? "" : " ") + (item ? item->name : Model().Source().Name(id));
        }
        return names;
    }
    void Select(const std::vector<std::string>& names) {
        std::vector<ElementId> ids;
        for (const std::string& name : names) {
            ids.push_back(Id(name));
        }
        Model().Select(ids);
        Settle();
    }
    // The first row with the text in a tree of the window; nullptr if there is none.
    QTreeWidgetItem* Row(const char* tree, const QString& text) {
        const auto found = Find<QTreeWidget>(tree).findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? nullptr : found.front();
    }
    // Types a value into a row of the properties as a hand does: the row is current, Enter opens it and takes
    // it.
    void TypeInRow(QTreeWidgetItem* row, const QString& value) {
        ASSERT_NE(row, nullptr);
        auto& pane = Find<QTreeWidget>("properties");
        pane.setFocus();
        pane.setCurrentItem(row, 1);
        QTest::keyClick(&pane, Qt::Key_Return);
        ASSERT_NE(QApplication::focusWidget(), &pane);
        TypeInEditor(value);
        Settle();
    }
    // The first line of the list of problems.
    std::string Problem() { return Find<QListWidget>("problems").item(0)->text().toStdString(); }
    std::string Status() { return m_window->statusBar()->currentMessage().toStdString(); }
    std::string UndoName() { return Model().Source().UndoName(); }

    // The middle of an item on the viewport.
    QPoint At(const std::string& name) { return Canvas().AreaOf(Id(name)).center().toPoint(); }
    // A place of the body in centimetres.
    QPoint InBody(double x, double y) {
        const double scale = Canvas().Zoom() / 100 * Canvas().logicalDpiX() / 2.54;
        const QRectF body = Canvas().AreaOf(BodyOf(Model().Source()));
        return (body.topLeft() + QPointF(x, y) * scale).toPoint();
    }
    void Click(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(Canvas().viewport(), Qt::LeftButton, modifiers, at);
        Settle();
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* view = Canvas().viewport();
        QTest::mousePress(view, Qt::LeftButton, modifiers, from);
        MoveTo((from + to) / 2, modifiers);
        MoveTo(to, modifiers);
        QTest::mouseRelease(view, Qt::LeftButton, modifiers, to);
        Settle();
    }
    // QTest moves the pointer without its buttons.
    void MoveTo(QPoint at, Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent move(QEvent::MouseMove, at, Canvas().viewport()->mapToGlobal(at), Qt::NoButton,
                         Qt::LeftButton, modifiers);
        QApplication::sendEvent(Canvas().viewport(), &move);
    }
    // Drags a field of a data set to a place of the viewport.
    void DropField(const std::string& field, QPoint at, const std::string& set = "Sales") {
        const std::unique_ptr<QMimeData> data(MimeDataOf({set, field}));
        EXPECT_TRUE(DropOn(*Canvas().viewport(), *data, at)) << field;
        Settle();
    }
    // Opens the text of an item.
    QTextEdit& OpenText(const std::string& name) {
        Select({name});
        Key(Qt::Key_F2);
        return Find<QTextEdit>("txtInPlace");
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Canvas(), key, modifiers);
        Settle();
    }
    // Does what `work` says, and closes the dialog that opens. Returns its name and, if `line` is given, the
    // text of this line in it.
    static std::string Opened(const std::function<void()>& work, const char* line = nullptr) {
        std::string opened = "none";
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            if (QWidget* dialog = QApplication::activeModalWidget()) {
                opened = dialog->objectName().toStdString();
                if (line) {
                    const auto* name = dialog->findChild<QLineEdit*>(line);
                    opened += " " + (name ? name->text().toStdString() : "-");
                }
                look.stop();
                QTest::keyClick(dialog, Qt::Key_Escape);
            }
        });
        look.start(20);
        work();
        Settle();
        return opened;
    }
    void Run(const char* command) {
        QAction& action = Find<QAction>(command);
        EXPECT_TRUE(action.isEnabled()) << command;
        action.trigger();
        Settle();
    }

    ConfigHome m_config;
    TemporaryFolder m_home;
    QPointer<DesignWindow> m_window;
};

}  // namespace designer::test
