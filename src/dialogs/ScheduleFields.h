// SPDX-License-Identifier: GPL-3.0-or-later
// Controls that the forms of schedules fill and clean in the same way.
#pragma once

class ComboBox;
class EditableText;

// Adds the names of all folders to the list if it is empty. Errors pass to the caller.
void ListFolders(ComboBox& cmbFolder);

// Adds the format words of single schedules.
void ListFormats(ComboBox& cmbFormat);

// Appends ";" to a list of recipients that does not end in one, and removes every '.
void CleanRecipients(EditableText& recipients);
