// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Menus.h"

#include <iterator>
#include <string_view>

namespace {

constexpr MenuRow Rows[] = {
    {"mnuFile", nullptr, "&File"},
    {"mnuFile", "mnuDesktop", "&Show Desktop"},
    {"mnuFile", "mnuEnd", "&Exit"},
    {"mnuTools", nullptr, "&Tools"},
    {"mnuTools", "mnuAdd", "Single Report Wizard"},
    {"mnuTools", "mnuQuick", "Package Reports Wizard"},
    {"mnuTools", "mnuPollInt", "Options"},
    {"mnuTools", "mnuDesign", "Design Current"},
    {"mnuTools", "mnuView", "Schedule History"},
    {"mnuViewType", nullptr, "&View"},
    {"mnuViewType", "mnuIcons", "&Icons                  "},  // sic: the blanks widen the menu
    {"mnuViewType", "mnuViewList", "&List"},
    {"mnuViewType", "mnuDetails", "&Details"},
    {"mnuViewType", "mnuRefHis", "Refresh History"},
    {"mnuWin", nullptr, "&Windows"},
    {"mnuWin", "mnuCasc", "&Cascade"},
    {"mnuWin", "mnuTile", "&Tile"},
    {"mnuWin", "mnuArr", "&Arrange Icnons"},  // sic
    {"mnuHelpTop", nullptr, "&Help"},
    {"mnuHelpTop", "mnuAbout", "About Oxbow Courier..."},
    {"mnuHelpTop", "mnuHelp", "Help..."},
    {"mnuHelpTop", "mnuSupport", "Support"},

    {"mnuPop", nullptr, "", true},
    {"mnuPop", "mnuExec", "Execute Schedule"},
    {"mnuPop", "mnuPopLine", "-"},
    {"mnuPop", "mnuDel", "Delete schedule"},
    {"mnuPop2", nullptr, "", true},
    {"mnuPop2", "mnubView", "Run Report..."},
    {"mnuPop2", "mnuOutput", "View Output..."},
    {"mnuPop2", "dntes", "-"},  // sic
    {"mnuPop2", "mnuEditPar", "Edit Parameters..."},
    {"mnuPop2", "mnuDir", "Delete selection..."},
    {"mnuDeskRpt", nullptr, "", true},
    {"mnuDeskRpt", "mnuDeskView", "Run Report"},
    {"mnuDeskRpt", "mnuDeskExec", "Execute Schedule"},
    {"mnuDeskRpt", "mnuDeskDel", "Delete Report"},
    {"mnuDeskRpt", "mnuDeskLine", "-"},
    {"mnuDeskRpt", "mnuDeskProp", "Properties"},
    {"mnuDeskFld", nullptr, "", true},
    {"mnuDeskFld", "mnuDeskNew", "New Folder"},
    {"mnuDeskFld", "mnuDeskOpen", "Open..."},
    {"mnuDeskFld", "mnuRename", "Rename..."},
    {"mnuDeskFld", "mnuFolderLine", "-"},
    {"mnuDeskFld", "mnuDeskDelfld", "Delete..."},
    {"mnutb", nullptr, "", true},
    {"mnutb", "mnutbLoad", "Load Editor..."},
    {"mnutb", "mnutbExit", "Exit"},
    {"mnutb", "mnuNothing", "Cancel Menu"},
    {"mnubtchPop1", nullptr, "", true},
    {"mnubtchPop1", "mnuDelPckg", "Delete Package..."},
    {"mnubtchPop2", nullptr, "", true},
    {"mnubtchPop2", "mnubtcRun", "Run Report..."},
    {"mnubtchPop2", "mnubtcOutput", "View Output..."},
    {"mnubtchPop2", "mnuhash99", "-"},  // sic
    {"mnubtchPop2", "mnubtcPar", "Edit Parameters..."},
    {"mnubtchPop2", "mnubtcExec", "Execute Package..."},
    {"mnubtchPop2", "mnubtcDelSel", "Delete Selection..."},
};

// A later entry would take the place of an earlier one with its name.
constexpr bool EntriesDiffer() {
    for (const MenuRow* row = std::begin(Rows); row != std::end(Rows); ++row) {
        for (const MenuRow* later = row + 1; later != std::end(Rows); ++later) {
            if (row->name && later->name && std::string_view(row->name) == later->name) {
                return false;
            }
        }
    }
    return true;
}
static_assert(EntriesDiffer());

}  // namespace

std::span<const MenuRow> MenuTable() {
    return Rows;
}
