// SPDX-License-Identifier: GPL-3.0-or-later
// The files of one folder whose names match a pattern.
#pragma once

#include "platform/controls/items/list_box.h"

// Starts in the current folder. Files can be dragged from it, as from a file manager.
class FileListBox : public ListBox {
    Q_OBJECT
 public:
    explicit FileListBox(QWidget* parent = nullptr);

    // A path of the system, without a backslash at its end. Setting it reads the folder again, even the same
    // one; an empty path changes nothing. Raises 76 "Path not found" if the folder is missing or cannot be
    // read; the list then stays unchanged.
    const std::string& Path() const { return m_path; }
    void Path(const std::string& path);
    // "*.rpt", or several patterns with ";" between them, without regard to case.
    const std::string& Pattern() const { return m_pattern; }
    void Pattern(const std::string& pattern);
    // of the selected file, without its folder; empty: no selection
    std::string FileName() const { return Text(); }

 protected:
    void keyPressEvent(QKeyEvent* event) override;  // Enter acts as a double click
    QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;

 private:
    void Fill(const QStringList& names);
    std::string m_path, m_pattern = "*";
};
