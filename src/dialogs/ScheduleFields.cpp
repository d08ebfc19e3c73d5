// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ScheduleFields.h"

#include "platform/base/convert.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/date_picker.h"
#include "platform/controls/masked_edit.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

void ListFolders(ComboBox& cmbFolder) {
    if (cmbFolder.ListCount() != 0) {
        return;
    }
    ADODB::Recordset folders;
    folders.Open("select foldername from folders", Global::ConnectionString);
    for (; !folders.EOF_(); folders.MoveNext()) {
        cmbFolder.AddItem(folders.Fields("foldername").Value.Text());
    }
    folders.Close();
}

void ListFormats(ComboBox& cmbFormat, Global::FormatList list) {
    for (const Global::OfferedFormat& offered : Global::OfferedFormats(list)) {
        cmbFormat.AddItem(std::string(offered.word));
    }
}

void SetFirstTimes(MaskEdBox& time, DTPicker& start, DTPicker& end) {
    constexpr std::size_t HoursAndMinutes = 5;
    time.Text(TimeText(Now()).substr(0, HoursAndMinutes));
    start.Value(Today());
    end.Value(CDate("31/12/3000"));
}

void RefusePage(const std::string& why, QWidget* missing) {
    MsgBox(why, vbExclamation);
    missing->setFocus();
}

void CleanRecipients(EditableText& recipients) {
    recipients.Text(cmFunc::CleanedRecipients(recipients.Text()));
}
