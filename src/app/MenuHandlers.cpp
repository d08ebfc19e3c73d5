// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/MenuHandlers.h"

#include <string_view>

#include "app/DocumentCommands.h"
#include "app/frmConfig.h"
#include "app/frmMain.h"
#include "desktop/DeskMenus.h"
#include "desktop/DetailViews.h"
#include "desktop/HistoryCommands.h"
#include "desktop/PackageCommands.h"
#include "desktop/PackageNodeCommands.h"
#include "desktop/frmViewer.h"
#include "dialogs/frmAddReport.h"
#include "dialogs/frmWiz.h"
#include "execution/PreviewCommands.h"
#include "execution/on_demand/DemandCommands.h"
#include "platform/base/named.h"

namespace {

HistoryFrame& History() {
    return frmViewer::Instance();
}

struct MenuHandler {
    std::string_view name;  // of the entry
    void (*click)();
};

constexpr MenuHandler Handlers[] = {
    {"mnuAdd", mnuAdd_Click},
    {"mnuDesktop", mnuDesktop_Click},
    {"mnuEnd", mnuEnd_Click},
    {"mnuQuick", mnuQuick_Click},
    {"mnuPollInt", mnuPollInt_Click},
    {"mnuDesign", mnuDesign_Click},
    {"mnuCasc", mnuCasc_Click},
    {"mnuTile", mnuTile_Click},
    {"mnuArr", mnuArr_Click},
    {"mnuAbout", mnuAbout_Click},
    {"mnuHelp", mnuHelp_Click},
    {"mnuSupport", mnuSupport_Click},
    {"mnuDeskView", mnuDeskView_Click},
    {"mnuDeskExec", mnuDeskExec_Click},
    {"mnubtcRun", mnubtcRun_Click},
    {"mnubtcExec", mnubtcExec_Click},
    {"mnubtcOutput", mnubtcOutput_Click},
    {"mnubtcPar", mnubtcPar_Click},
    {"mnubtcDelSel", mnubtcDelSel_Click},
    {"mnutbLoad", mnutbLoad_Click},
    {"mnutbExit", mnutbExit_Click},
    {"mnuView", mnuView_Click},
    {"mnuRefHis", mnuRefHis_Click},
    {"mnuExec", [] { mnuExec_Click(History); }},
    {"mnuDel", mnuDel_Click},
    {"mnubView", mnubView_Click},
    {"mnuOutput", mnuOutput_Click},
    {"mnuEditPar", mnuEditPar_Click},
    {"mnuDir", mnuDir_Click},
    {"mnuIcons", mnuIcons_Click},
    {"mnuViewList", mnuViewList_Click},
    {"mnuDetails", mnuDetails_Click},
    {"mnuDeskProp", mnuDeskProp_Click},
    {"mnuDeskRpt", mnuDeskRpt_Click},
    {"mnuDeskDel", mnuDeskDel_Click},
    {"mnuDeskNew", mnuDeskNew_Click},
    {"mnuDeskOpen", mnuDeskOpen_Click},
    {"mnuRename", mnuRename_Click},
    {"mnuDeskDelfld", mnuDeskDelfld_Click},
};
static_assert(NamesDiffer(Handlers));

}  // namespace

std::function<void()> FindMenuHandler(const std::string& entry) {
    for (const MenuHandler& handler : Handlers) {
        if (handler.name == entry) {
            return handler.click;
        }
    }
    return nullptr;
}
