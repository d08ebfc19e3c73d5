// SPDX-License-Identifier: GPL-3.0-or-later
// The choice of one data source or data set of a report, or of a new one, and its name.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "designer/model/report_data.h"

class QComboBox;
class QLineEdit;

namespace designer {

class Note;

class PartForm : public QWidget {
    Q_OBJECT
 public:
    // Shows the first of `names`, or a new part if there is none.
    PartForm(const Document& document, DataPart part, const std::vector<std::string>& names,
             QWidget* parent = nullptr);

    // Shows the part of this name; a new one if the name is empty.
    void Choose(const std::string& name);
    // The name that the part has in the report; empty for a new one.
    std::string Old() const;
    std::string Name() const;
    // Looks whether the part can have the name, and says so below it if not.
    bool IsComplete();
    // The choice of another part is closed after a change, which it would lose.
    void LockChoice();

 signals:
    void Chosen();   // another part
    void Changed();  // the name

 private:
    void ShowName();

    const Document& m_document;
    const DataPart m_part;
    QComboBox* m_choice;
    QLineEdit* m_name;
    Note* m_note;
};

}  // namespace designer
