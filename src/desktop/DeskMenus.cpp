#include "desktop/DeskMenus.h"

#include "desktop/DeskItems.h"
#include "desktop/DeskWindows.h"
#include "desktop/frmDesk.h"
#include "platform/clock.h"

void mnuDeskNew_Click() {
    // The key is the same all day long: a second item while the first is listed is an error.
    const std::string key = "New Folder" + std::to_string(desk::SecondsOfKey(Today()));
    ActiveDeskForm().lsvDesk->ListItems().Add(key, "New Folder", desk::FolderItem, desk::FolderItem);
}

void mnuDeskOpen_Click() {
    frmDesk& window = ActiveDeskForm();
    if (!window.SelectedText().empty()) {
        window.lsvDesk_DblClick();
    }
}

void mnuRename_Click() {
    ActiveDeskForm().lsvDesk->StartLabelEdit();
}

void mnuDeskDelfld_Click() {
    ActiveDeskForm().ComAction(7);
}

void mnuDeskDel_Click() {
    ActiveDeskForm().ComAction(5);
}

void mnuDeskRpt_Click() {
    ActiveDeskForm().lsvDesk->SelectedItem().Selected(true);
}
