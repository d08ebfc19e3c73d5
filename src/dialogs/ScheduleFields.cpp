// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ScheduleFields.h"

#include "platform/contracts/adodb.h"
#include "platform/controls/combo_box.h"
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

void ListFormats(ComboBox& cmbFormat) {
    for (const char* format : {"Acrobat Format (PDF)", "DHTML", "MS Excel", "MS Word", "Rich Text"}) {
        cmbFormat.AddItem(format);
    }
}

void CleanRecipients(EditableText& recipients) {
    const std::string text = recipients.Text();
    if (!text.empty() && text.back() != ';') {
        recipients.Text(text + ";");
    }
    cmFunc::StripQuotes(recipients);
}
