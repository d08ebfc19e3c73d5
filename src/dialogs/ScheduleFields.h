// What the forms of schedules fill and clean alike.
#pragma once

class ComboBox;
class EditableText;

// Adds the names of all folders, unless the list has been filled before. Errors pass to the caller.
void ListFolders(ComboBox& cmbFolder);

// The format words of single schedules.
void ListFormats(ComboBox& cmbFormat);

// Ends a list of recipients in ";" and takes every ' out of it.
void CleanRecipients(EditableText& recipients);
