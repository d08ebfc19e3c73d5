// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmSplash.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QIcon>
#include <QMouseEvent>
#include <QScreen>
#include <QThread>
#include <QWindow>

#include "app/version.h"
#include "ui_frmSplash.h"

QString VersionText() {
    return QString("Version %1.%2%3").arg(OXC_VERSION_MAJOR).arg(OXC_VERSION_MINOR).arg(OXC_VERSION_REVISION);
}

frmSplash::frmSplash(QWidget* parent)
    : QWidget(parent, (parent == nullptr ? Qt::SplashScreen : Qt::Dialog) | Qt::FramelessWindowHint),
      m_ui(std::make_unique<Ui::frmSplash>()) {
    m_ui->setupUi(this);
    Form_Load();
}

frmSplash::~frmSplash() = default;

void frmSplash::Form_Load() {
    m_ui->Label1->setText(VersionText());
    m_ui->imgLogo->setPixmap(QIcon(":/images/logo.svg").pixmap(m_ui->imgLogo->minimumSize()));
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.center() - rect().center());
    }
}

// A window manager may delay a new window: what is painted before the window appears is lost.
void frmSplash::ShowPainted() {
    constexpr qint64 MostMilliseconds = 1000;
    constexpr unsigned long Slice = 5;
    show();
    QElapsedTimer clock;
    clock.start();
    while (!windowHandle()->isExposed() && clock.elapsed() < MostMilliseconds) {
        QThread::msleep(Slice);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    repaint();
}

void frmSplash::Form_Click() {
    close();
}
void frmSplash::Form_KeyDown() {
    close();
}
void frmSplash::Form_MouseDown() {
    close();
}
void frmSplash::imgLogo_Click() {
    close();
}
void frmSplash::Label3_Click() {
    close();
}

void frmSplash::keyPressEvent(QKeyEvent* /*event*/) {
    Form_KeyDown();
}

void frmSplash::mousePressEvent(QMouseEvent* event) {
    const QWidget* hit = childAt(event->position().toPoint());
    if (hit == m_ui->imgLogo) {
        imgLogo_Click();
    } else if (hit == m_ui->Label3) {
        Label3_Click();
    } else {
        Form_MouseDown();
    }
}
