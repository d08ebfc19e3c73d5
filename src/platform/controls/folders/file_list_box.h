// The files of one folder whose names are like a pattern.
#pragma once

#include "platform/controls/items/list_box.h"

// Starts in the current folder. Files are dragged from it, as a file manager's are.
class FileListBox : public ListBox {
    Q_OBJECT
 public:
    explicit FileListBox(QWidget* parent = nullptr);

    // As the system writes paths, without a backslash at its end. Setting it reads the folder, the same one
    // too; an empty path changes nothing. 76 "Path not found" when there is none or it may not be read; the
    // list stays as it was.
    const std::string& Path() const { return m_path; }
    void Path(const std::string& path);
    // "*.rpt", or several with ";" between them; in any case of letters.
    const std::string& Pattern() const { return m_pattern; }
    void Pattern(const std::string& pattern);
    std::string FileName() const { return Text(); }  // of the selected file, without its folder; empty: none

 protected:
    void keyPressEvent(QKeyEvent* event) override;  // Enter is a double click
    QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;

 private:
    void Fill(const QStringList& names);
    std::string m_path, m_pattern = "*";
};
