// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/PreviewCommands.h"

#include "execution/PackagePreview.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

void mnubtcRun_Click() {
    const DeskWindow& desk = Global::ActiveDesk();
    const std::string detailID = cmFunc::GetDelimitedField(desk.SelectedKey(), 1, ":");
    Global::PreviewPackageReport("r.DetailID = " + detailID + " and Reporttitle = '" + desk.SelectedText() +
                                 "' order by parid");
}

void mnuDeskView_Click() {
    Global::ActiveDesk().ComAction(PreviewCommand);
}
