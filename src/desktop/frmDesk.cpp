// SPDX-License-Identifier: GPL-3.0-or-later
// Members of frmDesk: its load, events and size. Others are in DeskCommands.cpp, DeskFilling.cpp,
// DeskList.cpp.
#include "desktop/frmDesk.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <algorithm>
#include <functional>
#include <iterator>

#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/Images.h"
#include "execution/RunReport.h"
#include "platform/base/convert.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/registry.h"
#include "platform/contracts/shared_store.h"
#include "platform/controls/child_area.h"
#include "platform/controls/kit/key_codes.h"
#include "platform/controls/kit/twips.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "store/LiveDatabase.h"
#include "ui_frmDesk.h"

namespace {

constexpr int WindowWidth = 10260, WindowHeight = 7970;  // twips
constexpr int BesideList = 2880, AboveList = 1110;       // twips
constexpr int EscapeKey = 27;
constexpr int BottomMargin = 4, BetweenTreeAndList = 4;  // pixels

struct Button {
    const char* caption;  // null for a separator
    const char* tip;
};
constexpr Button Buttons[] = {
    {"New Folder", "Create a new folder"},
    {"New Report", "Schedule a new report"},
    {"New Package", ""},
    {nullptr, nullptr},
    {"Preview", "Preview the selected report"},
    {"Delete", "Delete the selected item"},
    {nullptr, nullptr},
    {"History", "View the schedule history"},
    {"Design", "Edit the report design"},
    {"Options", "Configuration options"},
    {"Help", "View online help"},
};

bool IsUnreadableDatabase(const RuntimeError& error) {
    return error.Number() == err::DataUnavailable || error.Number() == err::DataTableMissing;
}

}  // namespace

frmDesk::frmDesk(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::frmDesk>()) {
    m_ui->setupUi(this);
    Toolbar1 = m_ui->Toolbar1;
    tvwFolder = m_ui->tvwFolder;
    lsvDesk = m_ui->lsvDesk;
    tvwFolder->Icons(&ItemImages());
    lsvDesk->Icons(&ItemImages());
    Toolbar1->Icons(&ToolbarImages());
    BuildToolbar();
    connect(Toolbar1, &ToolBar::ButtonClick, this, &frmDesk::Toolbar1_ButtonClick);
    connect(tvwFolder, &TreeView::Click, this, &frmDesk::tvwFolder_Click);
    connect(tvwFolder, &TreeView::KeyDown, this, &frmDesk::tvwFolder_KeyDown);
    connect(lsvDesk, &ListView::Click, this, &frmDesk::lsvDesk_Click);
    connect(lsvDesk, &ListView::Deselected, this, &frmDesk::lsvDesk_Deselected);
    connect(lsvDesk, &ListView::DblClick, this, &frmDesk::lsvDesk_DblClick);
    connect(lsvDesk, &ListView::MouseUp, this, &frmDesk::lsvDesk_MouseUp);
    connect(lsvDesk, &ListView::ColumnClick, this, &frmDesk::lsvDesk_ColumnClick);
    connect(lsvDesk, &ListView::AfterLabelEdit, this, &frmDesk::lsvDesk_AfterLabelEdit);
    connect(lsvDesk, &ListView::KeyDown, this, &frmDesk::lsvDesk_KeyDown);
}

frmDesk::~frmDesk() = default;

frmDesk& frmDesk::DefaultInstance() {
    static auto* const form = [] {
        auto* made = new frmDesk;
        made->Form_Load();
        return made;
    }();
    return *form;
}

void frmDesk::BuildToolbar() {
    for (const Button& button : Buttons) {
        if (button.caption == nullptr) {
            Toolbar1->Buttons().AddSeparator();
            continue;
        }
        const int image = static_cast<int>(&button - Buttons) + 1;
        Toolbar1->Buttons().Add(button.caption, button.tip, image);
    }
    ShowButtons();
}

// The window that the handlers of the menus act on while this one is in front. Another one may have taken its
// slot, or the slot may be empty.
const frmDesk* frmDesk::ReachedByCommands() const {
    return Tag.empty() ? this : FindDesk(CInt(Tag));
}

// Commands that the toolbar hands on to the menus' handlers are greyed as the menus are while these have no
// window or item to act on.
void frmDesk::ShowButtons() {
    const frmDesk* reached = ReachedByCommands();
    const bool window = reached != nullptr;
    const bool item = reached == this || (window && reached->lsvDesk->HasSelection());
    const int icon = lsvDesk->HasSelection() ? lsvDesk->SelectedItem().Icon : 0;
    const bool ofPackage = icon == desk::PackageItem || icon == desk::PackageReportItem;
    ToolBarButtons& buttons = Toolbar1->Buttons();
    buttons(PreviewButton).Enabled(m_preview && (icon != desk::PackageReportItem || item));
    buttons(DeleteButton).Enabled(ofPackage ? item : window || icon != desk::ScheduleItem);
    buttons(DesignButton).Enabled(m_design && item);
}

void frmDesk::Form_Load() {
    const std::function<void()> steps[] = {
        [] {
            // The commands of the View menu store it, but every window opens in the view of its design (sic).
            CInt(ShellMod::ReadSetting(HKEY_LOCAL_MACHINE, ShellMod::SettingsKey, "View", "0"));
        },
        [] { Global::BusyCursor(true); },
        [] {
            if (Global::CurrentFolderID.empty()) {
                Global::CurrentFolderID = "0";
            }
        },
        [this] { desk::AddFolders(*lsvDesk, Global::CurrentFolderID, desk::FolderItem); },
        [this] { SetFirstSize(); },
        [this] { BuildTree(); },
        [] { Global::BusyCursor(false); },
        [this] {
            if (CInt(Global::CurrentFolderID) == 0) {
                AddBatches();
            }
        },
        [this] { tvwFolder->Nodes()(1).Expanded(true); },
    };
    constexpr std::size_t FolderQuery = 3;
    for (std::size_t step = 0; step < std::size(steps);) {
        try {
            steps[step]();
            ++step;
        } catch (const StoreGivenUp&) {
            return ShowWithoutStore();
        } catch (...) {
            const RuntimeError error = CurrentError();
            if (!IsUnreadableDatabase(error)) {
                Global::ShowError(error);
                ++step;
                continue;
            }
            // A fresh file would take the place of the link.
            if (IsSharedStore(Global::ConnectionString)) {
                Global::ShowError(error);
                return ShowWithoutStore();
            }
            MsgBox(
                "The selected data source is invalid or corrupt.\nOxbow Courier will now create a fresh data "
                "source.",
                vbCritical);
            Global::EnsureLiveDatabase();
            step = FolderQuery;
        }
    }
}

// The root of the tree is there to be clicked when the store can be reached again.
void frmDesk::ShowWithoutStore() {
    SetFirstSize();
    if (tvwFolder->Nodes().Count() == 0) {
        AddRoot();
    }
    Global::BusyCursor(false);
}

void frmDesk::SetFirstSize() {
    ChildArea::GiveSize(*this, {Pixels(WindowWidth), Pixels(WindowHeight)});
    if (Global::DeskCount == 1) {
        ChildArea::WindowOf(*this).move(Pixels(1), Pixels(1));
    }
}

void frmDesk::Form_Activate() {
    Global::DeskIndex = CInt(Tag);
    ShowButtons();
}

void frmDesk::Form_Unload() {
    --Global::DeskCount;
    const auto slot = static_cast<std::size_t>(CInt(Tag));
    if (slot < Global::DeskWindows.size()) {
        Global::DeskWindows[slot] = nullptr;
    }
}

// A window that is too small leaves tree and list unchanged. The toolbar needs more space than its design if
// the user's font is large.
void frmDesk::Form_Resize() {
    const int bar = std::max(Toolbar1->sizeHint().height(), Pixels(AboveList) - BottomMargin);
    Toolbar1->setGeometry(0, 0, width(), bar);
    const int listWidth = width() - Pixels(BesideList);
    const int height = this->height() - std::max(Pixels(AboveList), bar + BottomMargin);
    if (listWidth < 0 || height < 0) {
        return;
    }
    tvwFolder->setGeometry(0, bar, Pixels(BesideList) - BetweenTreeAndList, height);
    lsvDesk->setGeometry(Pixels(BesideList), bar, listWidth, height);
    lsvDesk->Refresh();
}

void frmDesk::Form_KeyDown(int keyCode) {
    if (keyCode != EscapeKey) {
        return;
    }
    ListItems& items = lsvDesk->ListItems();
    for (int index = items.Count(); index >= 1; --index) {
        if (items(index).Text() == "New Folder") {
            items.Remove(index);
        }
    }
}

void frmDesk::closeEvent(QCloseEvent* event) {
    Form_Unload();
    event->accept();
}

void frmDesk::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmDesk::keyPressEvent(QKeyEvent* event) {
    Form_KeyDown(KeyCode(*event));
    QWidget::keyPressEvent(event);
}

std::string frmDesk::Caption() const {
    return windowTitle().toStdString();
}

void frmDesk::ListMousePointer(int pointer) {
    lsvDesk->MousePointer(pointer);
}

std::string frmDesk::SelectedText() const {
    return lsvDesk->SelectedItem().Text();
}

std::string frmDesk::SelectedKey() const {
    return lsvDesk->SelectedItem().Key;
}

void frmDesk::EnableButton(int index, bool enabled) {
    Toolbar1->Buttons()(index).Enabled(enabled);
    if (index == PreviewButton) {
        m_preview = enabled;
    } else if (index == DesignButton) {
        m_design = enabled;
    }
    ShowButtons();
}

// Includes the title bar: a window that waits cannot be closed either. The former focus is restored.
void frmDesk::EnableForm(bool enabled) {
    if (!enabled && isEnabled()) {
        m_focus = focusWidget();
    }
    ChildArea::WindowOf(*this).setEnabled(enabled);
    if (enabled && m_focus) {
        m_focus->setFocus();
    }
}

void frmDesk::Toolbar1_ButtonClick(int index) {
    ComAction(index + 1);
}
