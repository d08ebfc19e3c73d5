// SPDX-License-Identifier: GPL-3.0-or-later
// A wait that only lets the windows repaint themselves.
#include "platform/qt/qt_loop.h"

#include <gtest/gtest.h>

#include <QPaintEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <thread>

#include "platform/contracts/adodb.h"
#include "shared/Global.h"
#include "support/database.h"

namespace {

class Window : public QWidget {
 public:
    int paints = 0;

 protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
};

class QtLoopRepaint : public testing::Test {
 protected:
    void SetUp() override {
        window.resize(200, 100);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QCoreApplication::processEvents();
        window.paints = 0;
        SetLoop(&loop);
    }
    void TearDown() override { SetLoop(nullptr); }

    QtLoop loop;
    Window window;
};

}  // namespace

TEST_F(QtLoopRepaint, PaintsAndTakesNoTimer) {
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&ticks] { ++ticks; });
    timer.start(1);
    window.update();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    loop.Repaint();
    EXPECT_EQ(window.paints, 1);
    EXPECT_EQ(ticks, 0);
    loop.Yield();
    EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks > 0; }));
}

TEST_F(QtLoopRepaint, WindowPaintsItselfWhileALockedDatabaseIsWaitedFor) {
    const fakes::TestDatabase database;
    const std::shared_ptr<void> holder = database.Hold();
    ADODB::SetBusyWait(0.5);
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    window.update();
    EXPECT_THROW(connection.Execute("delete from Folders"), RuntimeError);
    EXPECT_EQ(window.paints, 1);
    ADODB::SetBusyWait(0);
}

TEST_F(QtLoopRepaint, ShortWaitRunsNoEvent) {
    const fakes::TestDatabase database;
    const std::shared_ptr<void> holder = database.Hold();
    ADODB::SetBusyWait(0.1);
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    window.update();
    EXPECT_THROW(connection.Execute("delete from Folders"), RuntimeError);
    EXPECT_EQ(window.paints, 0);
    ADODB::SetBusyWait(0);
}
