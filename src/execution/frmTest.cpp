// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/frmTest.h"

#include <QPointer>
#include <QShortcut>

#include "execution/RunReport.h"
#include "platform/base/convert.h"
#include "platform/base/resume_next.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/child_area.h"
#include "platform/controls/kit/twips.h"
#include "platform/viewer/report_viewer.h"
#include "shared/Global.h"
#include "ui_frmTest.h"

namespace {

constexpr int WindowHeight = 8800, WindowWidth = 14400;  // twips
constexpr int Margin = 120;                              // twips, left of and above the report
// The difference between the sizes of window and report: margins, borders and, in height, the title bar.
constexpr int AroundWidth = 300, AroundHeight = 600;
// The same of a window that stands alone, whose size leaves borders and title bar out.
constexpr int AroundAlone = 180;
constexpr int PageZoom = 81;  // percent

int Size(int twips) {
    if (twips < 0) {
        throw RuntimeError(err::InvalidPropertyValue);
    }
    return Pixels(twips);
}

}  // namespace

frmTest::frmTest(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::frmTest>()) {
    m_ui->setupUi(this);
    setFocusProxy(m_ui->crp);
}

frmTest::~frmTest() = default;

void frmTest::StandAlone() {
    m_standsAlone = true;
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    for (const QKeySequence& keys : ChildArea::CloseKeys()) {  // as a child window's
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &frmTest::CloseWindow);
    }
}

void frmTest::Form_Load() {
    const QPointer<frmTest> form(this);
    try {
        Global::BusyCursor(true);
        setWindowTitle(QString::fromStdString("REPORT VIEWER - " + UCase(Global::OpenedReport().Title())));
        ShowWindow();
        DoEvents();
        if (form && !m_closed) {
            ViewCurrentReport();
        }
        Global::BusyCursor(false);
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::BusyCursor(false);
        MsgBox(Global::ErrorText("", error), vbExclamation);
        if (form && !m_closed) {
            show();
        }
    }
}

// Shows the window while the report runs.
void frmTest::ShowWindow() {
    QWidget& window = ChildArea::WindowOf(*this);
    if (window.isMinimized() || window.isMaximized()) {
        window.showNormal();
    }
    ChildArea::GiveSize(*this, {Pixels(WindowWidth), Pixels(WindowHeight)});
    ChildArea::PlaceAtTop(*this);
    show();
    ChildArea::Activate(*this);
    // The report gets the keys at once; the frame would offer them to buttons that are disabled until there
    // are pages.
    setFocus();
}

void frmTest::ViewCurrentReport() {
    PlaceReport();
    SetReportWidth();
    SetReportHeight();
    ReportViewer& crp = *m_ui->crp;
    crp.ReportSource(Global::CurrentReport);
    crp.DisplayOption(true);
    crp.ViewReport();
    crp.Zoom(PageZoom);
}

void frmTest::PlaceReport() {
    m_ui->crp->move(Pixels(Margin), Pixels(Margin));
}

void frmTest::SetReportWidth() {
    const int around = m_standsAlone ? AroundAlone : AroundWidth;
    m_ui->crp->resize(Size(Twips(ChildArea::WindowOf(*this).width()) - around), m_ui->crp->height());
}

void frmTest::SetReportHeight() {
    const int around = m_standsAlone ? AroundAlone : AroundHeight;
    m_ui->crp->resize(m_ui->crp->width(), Size(Twips(ChildArea::WindowOf(*this).height()) - around));
}

void frmTest::Form_Resize() {
    ResumeNext([this] { PlaceReport(); });
    ResumeNext([this] { SetReportWidth(); });
    ResumeNext([this] { SetReportHeight(); });
    ResumeNext([this] { update(); });
}

void frmTest::CloseWindow() {
    ChildArea::WindowOf(*this).close();
}

void frmTest::closeEvent(QCloseEvent* event) {
    m_closed = true;
    QWidget::closeEvent(event);
}

void frmTest::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Form_Resize();
}
