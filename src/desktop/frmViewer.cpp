// SPDX-License-Identifier: GPL-3.0-or-later
// Members of frmViewer: its load and events. HistoryFilling.cpp fills its trees.
#include "desktop/frmViewer.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QPointer>
#include <functional>

#include "desktop/HistoryNodes.h"
#include "desktop/Images.h"
#include "execution/RunReport.h"
#include "platform/base/resume_next.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/child_area.h"
#include "platform/controls/kit/key_codes.h"
#include "platform/controls/kit/twips.h"
#include "shared/Global.h"
#include "ui_frmViewer.h"

namespace {

constexpr int HistoryWidth = 9600, HistoryHeight = 7200;  // twips
constexpr std::int16_t NoDesk = 9999;                     // no Desktop window has this number (sic)
constexpr int RightButton = 2;

void PopupAt(const TreeView& tree, QPoint place, const std::string& menu) {
    const QPoint corner = tree.mapToGlobal(place);
    Global::Frame->PopupMenu(menu, corner.x(), corner.y());
}

}  // namespace

frmViewer& frmViewer::Instance() {
    static QPointer<frmViewer> form;
    // A window that was just closed may not be destroyed yet, and it can be closed while it loads.
    while (!form || form->m_closed) {
        form = new frmViewer;
        Global::Frame->AddChild(*form);
        form->Form_Load();
    }
    return *form;
}

frmViewer::frmViewer(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::frmViewer>()) {
    m_ui->setupUi(this);
    vwTab = m_ui->vwTab;
    tvReports = m_ui->tvReports;
    tvBatch = m_ui->tvBatch;
    tvReports->Icons(&HistoryImages());
    tvBatch->Icons(&HistoryImages());
    vwTab->Add("Single Reports");
    vwTab->Add("Package Reports");
    ConnectControls();
}

frmViewer::~frmViewer() = default;

void frmViewer::ConnectControls() {
    connect(vwTab, &TabStrip::Click, this, &frmViewer::vwTab_Click);
    // A click on the current tab reads its data again, too.
    connect(vwTab, &TabStrip::tabBarClicked, this, [this](int tab) {
        if (tab == vwTab->currentIndex()) {
            vwTab_Click();
        }
    });
    connect(tvReports, &TreeView::DblClick, this, &frmViewer::tvReports_DblClick);
    connect(tvReports, &TreeView::KeyDown, this, &frmViewer::tvReports_KeyDown);
    connect(tvReports, &TreeView::MouseUp, this, &frmViewer::tvReports_MouseUp);
    connect(tvBatch, &TreeView::KeyDown, this, &frmViewer::tvBatch_KeyDown);
    connect(tvBatch, &TreeView::MouseUp, this, &frmViewer::tvBatch_MouseUp);
}

std::optional<std::string> frmViewer::SelectedSchedule() const {
    const Node& node = tvReports->SelectedItem();
    return node.Children() == 0 ? std::optional(history::ScheduleText(node)) : std::nullopt;
}

void frmViewer::Form_Load() {
    const QPointer<frmViewer> form(this);
    const std::function<void()> steps[] = {
        [this] { ShowFirst(); },   [] { Global::Frame->EntryEnabled("mnuRefHis", true); },
        [] { DoEvents(); },        [] { Global::BusyCursor(true); },
        [this] { FillReports(); }, [this] { setWindowTitle("Schedule History"); },
        [this] { ExpandShown(); }, [] { Global::BusyCursor(false); },
    };
    for (const std::function<void()>& step : steps) {
        if (!form || m_closed) {
            return;
        }
        try {
            step();
        } catch (...) {
            const RuntimeError error = CurrentError();
            if (error.Number() == err::NoCurrentRecord) {
                continue;
            }
            MsgBox(Global::ErrorText("", error), vbExclamation);
            Global::BusyCursor(false);
            return;
        }
    }
}

void frmViewer::ExpandShown() {
    Nodes& nodes = ShownTree().Nodes();
    for (int index = 1; index <= nodes.Count(); ++index) {
        nodes(index).Expanded(true);
    }
}

// The window is on the screen while it is filled.
void frmViewer::ShowFirst() {
    if (m_shown) {
        return;
    }
    m_shown = true;
    if (auto* window = qobject_cast<QMdiSubWindow*>(parentWidget()); window != nullptr) {
        connect(window, &QMdiSubWindow::aboutToActivate, this, &frmViewer::Form_Activate);
        ChildArea::GiveSize(*this, {Pixels(HistoryWidth), Pixels(HistoryHeight)});
        ChildArea::PlaceFree(*this);
    }
    show();
    ShowForm();
    tvReports->setFocus();
}

void frmViewer::ShowForm() {
    ChildArea::Activate(*this);
    Form_Activate();
}

TreeView& frmViewer::ShownTree() {
    return vwTab->SelectedItem() == 1 ? *tvReports : *tvBatch;
}

// Menu commands for a Desktop window must not reach one that is covered by this window.
void frmViewer::Form_Activate() {
    Global::DeskIndex = NoDesk;
}

void frmViewer::Form_Unload() {
    Global::Frame->EntryEnabled("mnuRefHis", false);
}

void frmViewer::Form_KeyDown(int keyCode) {
    if (keyCode != RefreshKey) {
        return;
    }
    const QPointer<frmViewer> form(this);
    Form_Load();
    if (!form) {
        return;
    }
    TreeView& tree = ShownTree();
    for (int index = 0; index < tree.topLevelItemCount(); ++index) {
        ExpandNode(static_cast<Node&>(*tree.topLevelItem(index)));
    }
}

void frmViewer::ExpandNode(Node& node) {
    node.Expanded(true);
    for (int index = 0; index < node.Children(); ++index) {
        ExpandNode(static_cast<Node&>(*node.child(index)));
    }
}

void frmViewer::vwTab_Click() {
    const int tab = vwTab->SelectedItem();
    m_ui->pages->setCurrentIndex(tab - 1);
    if (tab == 2) {
        FillBatch();
    }
}

// Only shows the hourglass for a moment (sic): schedules are opened on the Desktop.
void frmViewer::tvReports_DblClick() {
    try {
        const Node& node = tvReports->SelectedItem();
        if (!history::ScheduleText(node).empty() && node.Children() == 0) {
            Global::BusyCursor(true);
            Global::BusyCursor(false);
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        if (error.Number() != err::InvalidUseOfNull && error.Number() != err::ObjectNotSet) {
            MsgBox(error.Description());
        }
    }
}

void frmViewer::tvReports_KeyDown(int keyCode) {
    Form_KeyDown(keyCode);
}

void frmViewer::tvBatch_KeyDown(int keyCode) {
    if (keyCode == RefreshKey) {
        Form_Load();
    }
}

void frmViewer::tvReports_MouseUp(int button, QPoint place) {
    ResumeNext([&] {
        const Node& node = tvReports->SelectedItem();
        if (button == RightButton && node.Children() == 0 && node.Image() != history::NextRunNode) {
            PopupAt(*tvReports, place, "mnuPop");
        }
    });
}

void frmViewer::tvBatch_MouseUp(int button, QPoint place) {
    ResumeNext([&] {
        const int image = tvBatch->SelectedItem().Image();
        const bool package = image == history::PackageNode;
        if (button != RightButton || (!package && image != history::ReportNode)) {
            return;
        }
        Global::Frame->EntryCaption("mnuDir", package ? "Delete batch..." : "Delete report...");
        for (const char* entry : {"mnuEditPar", "dntes", "mnubView", "mnuOutput"}) {
            Global::Frame->EntryVisible(entry, !package);
        }
        PopupAt(*tvBatch, place, "mnuPop2");
    });
}

void frmViewer::closeEvent(QCloseEvent* event) {
    m_closed = true;
    Form_Unload();
    event->accept();
}

// Keys that a tree has handled arrive here as well. The window may be gone after its handler.
void frmViewer::keyPressEvent(QKeyEvent* event) {
    QWidget::keyPressEvent(event);
    if (!tvReports->hasFocus() && !tvBatch->hasFocus()) {
        Form_KeyDown(KeyCode(*event));
    }
}
