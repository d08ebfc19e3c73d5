// SPDX-License-Identifier: GPL-3.0-or-later
// A report file that is not well-formed, as plain text: its error is marked, and can be mended here.
#pragma once

#include <QWidget>
#include <string>

#include "designer/document/report_file.h"
#include "designer/document/source_tree.h"

class QLabel;
class QPlainTextEdit;

namespace designer {

class SourcePage : public QWidget {
    Q_OBJECT
 public:
    explicit SourcePage(QWidget* parent = nullptr);

    // Shows the bytes of a file and why they are no report.
    void Show(std::string_view bytes, const SourceFlaw& flaw);
    // Shows why the text is still not a report, and marks the line of the error.
    void ShowFlaw(const SourceFlaw& flaw);
    std::string Bytes() const;
    bool IsModified() const;
    void SetModified(bool modified);

 signals:
    void ModifiedChanged();
    void Edited();
    void DesignRequested();  // the text may be well-formed now

 private:
    QLabel* m_message;
    QPlainTextEdit* m_text;
    PlainText m_form;  // how the file was written; its text is that of the editor
};

}  // namespace designer
