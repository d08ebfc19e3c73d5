// SPDX-License-Identifier: GPL-3.0-or-later
// A viewer in a window, over a report with the pages of the test.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <algorithm>
#include <string>

#include "platform/viewer/page_canvas.h"
#include "platform/viewer/report_viewer.h"
#include "support/fakes.h"

namespace viewer::test {

class ViewerTest : public testing::Test {
 protected:
    ViewerTest() {
        m_viewer.resize(900, 600);
        m_viewer.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_viewer));
    }

    static fakes::FakePages Pages(int count) {
        fakes::FakePages pages;
        pages.pages.assign(static_cast<std::size_t>(count), {});
        for (int i = 0; i < count; ++i) {
            pages.pages[static_cast<std::size_t>(i)].lines = {"Page " + std::to_string(i + 1), "Text of it"};
        }
        return pages;
    }
    void Source(fakes::FakePages pages) {
        m_engine.reports["sales.rpt"].pages = std::move(pages);
        m_viewer.ReportSource(m_engine.OpenReport("sales.rpt"));
    }
    // Shows the pages, all of them made.
    void Show(fakes::FakePages pages) {
        Source(std::move(pages));
        m_viewer.ViewReport();
        Settle();
    }
    void Show(int count) { Show(Pages(count)); }
    static void Settle() {
        for (int i = 0; i < 30; ++i) {
            QCoreApplication::processEvents();
        }
    }

    template <typename T = QWidget>
    T& Find(const char* name) {
        T* found = m_viewer.findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    PageCanvas& Canvas() { return Find<PageCanvas>("pages"); }
    void Click(const char* name) {
        QTest::mouseClick(&Find<QAbstractButton>(name), Qt::LeftButton);
        Settle();
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        Canvas().setFocus();
        QTest::keyClick(&Canvas(), key, modifiers);
        Settle();
    }
    std::string PageBox() {
        return (Find<QLineEdit>("txtPage").text() + Find<QLabel>("lblPages").text()).toStdString();
    }
    std::string Message() {
        const auto& message = Find<QLabel>("lblMessage");
        return message.isVisible() ? message.text().toStdString() : "";
    }
    std::string ZoomBox() { return Find<QComboBox>("cmbZoom").currentText().toStdString(); }
    long Calls(const std::string& call) {
        return std::count(m_engine.calls.begin(), m_engine.calls.end(), call);
    }
    // Returns the position of a page's point on the canvas; pages are centred.
    QPoint At(int page, double x, double y) {
        const PageCanvas& canvas = Canvas();
        const double scale = canvas.Zoom() / 100 * canvas.logicalDpiY() / 72;
        PageLayout layout;
        for (const fakes::FakePage& one : m_engine.reports["sales.rpt"].pages.pages) {
            layout.Add({one.width, one.height});
        }
        layout.SetScale(scale);
        layout.SetViewWidth(canvas.viewport()->width());
        const QPointF origin(canvas.horizontalScrollBar()->value(), canvas.verticalScrollBar()->value());
        return (layout.Page(page).topLeft() + QPointF(x, y) * scale - origin).toPoint();
    }

    fakes::FakeEngine m_engine;
    ReportViewer m_viewer;
};

}  // namespace viewer::test
