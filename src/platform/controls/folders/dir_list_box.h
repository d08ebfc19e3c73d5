// SPDX-License-Identifier: GPL-3.0-or-later
// A folder list: the folders above the current folder, from the root on, the folder itself, and its
// subfolders, each level indented. A double click or Enter opens a folder.
#pragma once

#include <QListWidget>
#include <string>

// Starts in the current folder.
class DirListBox : public QListWidget {
    Q_OBJECT
 public:
    explicit DirListBox(QWidget* parent = nullptr);

    // A path of the system, without a backslash at its end except at the root. An empty path changes nothing.
    // Raises 76 "Path not found" if the folder is missing or cannot be read; the list then stays unchanged.
    const std::string& Path() const { return m_path; }
    void Path(const std::string& path);

 signals:
    void Change();  // Path has changed
    // Any key but Tab and modifier keys (Shift, Ctrl, Alt); see KeyCode. If a handler sets another Path, the
    // list ignores the key.
    void KeyDown(int keyCode);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void Fill(const std::string& folder, const QStringList& below);
    enum class Picture { Open, Closed };
    void AddFolder(const QString& name, const std::string& folder, int depth, Picture picture);
    void Go(const QListWidgetItem* line);

    std::string m_path;
};
