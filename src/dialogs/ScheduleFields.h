// SPDX-License-Identifier: GPL-3.0-or-later
// Controls that the forms of schedules fill and clean in the same way.
#pragma once

#include <string>

#include "execution/ExportFormat.h"

class ComboBox;
class DTPicker;
class EditableText;
class MaskEdBox;
class QWidget;

// What a wizard says when a field of a page is empty.
inline constexpr const char* FieldsMissing = "Please fill in all the fields";

// Adds the names of all folders to the list if it is empty. Errors pass to the caller.
void ListFolders(ComboBox& cmbFolder);

// Adds the words of the list of formats.
void ListFormats(ComboBox& cmbFormat, Global::FormatList list);

// Sets the values of a new schedule: at this time of day, from today on, without an end that anybody will
// see.
void SetFirstTimes(MaskEdBox& time, DTPicker& start, DTPicker& end);

// Shows the box and then moves the focus to the control that it names.
void RefusePage(const std::string& why, QWidget* missing);

// Appends ";" to a list of recipients that does not end in one, and removes every '.
void CleanRecipients(EditableText& recipients);
