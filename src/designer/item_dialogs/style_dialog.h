// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the style of the selected items: font, borders, fill, alignment, the format of values and
// paragraphs, with a sample (MS-RDL, Style and Paragraph).
#pragma once

#include "designer/item_dialogs/values_dialog.h"

class QTreeWidget;

namespace designer {

// What the properties of the borders begin with.
constexpr const char* BorderSides[] = {"Left border", "Right border", "Top border", "Bottom border"};

class StyleSample;

class StyleDialog : public ValuesDialog {
    Q_OBJECT
 public:
    StyleDialog(DesignModel& model, const std::vector<ElementId>& ids, QWidget* parent = nullptr);

 private:
    void BuildFontPage();
    void BuildBorderPage();
    void BuildFillPage();
    void BuildAlignmentPage();
    void BuildFormatPage();
    void BuildParagraphPage();
    void FillFormats(const std::string& language);
    void SetBorders(const std::string& style);
    // The value of a border's side: its own, else that of all sides.
    std::string OfSide(const std::string& side, const std::string& part) const;
    std::string Language() const;
    void ShowSample();

    QTreeWidget* m_formats = nullptr;
    StyleSample* m_sample = nullptr;
    std::string m_language;  // of the samples in the list
};

// Returns how a number and its negative look with the format, separated by " | ", or a date if it is a format
// of dates. Empty for an expression, and for a format that fits neither.
QString SampleOfFormat(const std::string& format, const std::string& language);

}  // namespace designer
