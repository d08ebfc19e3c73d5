// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that changes the file of a shared data source, NAME.rds. OK writes the file whole or not at all;
// what is not changed of it stays byte for byte.
#pragma once

#include <QDialog>
#include <filesystem>
#include <string>

#include "designer/model/logons.h"
#include "designer/model/shared_file.h"

namespace designer {

class Note;
class SourceForm;

class SharedSourceDialog : public QDialog {
    Q_OBJECT
 public:
    // `folder` is that of the report. Raises RuntimeError if the file cannot be read, and SourceFlaw if it is
    // not well-formed.
    SharedSourceDialog(std::filesystem::path file, const std::filesystem::path& folder,
                       QWidget* parent = nullptr);
    void accept() override;
    // What was typed and is not kept in the file; it may be empty.
    const Logon& TypedLogon() const { return m_logon; }

 private:
    std::string PathOf(const char* element) const;
    std::string Typed() const;

    SharedFile m_file;
    SourceForm* m_form;
    Note* m_note;
    Logon m_logon;
    std::string m_shown;  // the connect string as the form has it at first
};

}  // namespace designer
