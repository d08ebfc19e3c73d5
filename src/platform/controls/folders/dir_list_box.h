// A folder among its like: the folders that it stands in, from the root on, itself, and the folders in it,
// each indented below the one before. Double click or Enter goes to one of them.
#pragma once

#include <QListWidget>
#include <string>

// Starts in the current folder.
class DirListBox : public QListWidget {
    Q_OBJECT
 public:
    explicit DirListBox(QWidget* parent = nullptr);

    // As the system writes paths, without a backslash at its end except at the root. An empty path changes
    // nothing. 76 "Path not found" when there is none or it may not be read; the list stays as it was.
    const std::string& Path() const { return m_path; }
    void Path(const std::string& path);

 signals:
    void Change();  // Path is another one now
    // Any key but Tab and those that are only held with others (Shift, Ctrl, Alt); see KeyCode. A handler
    // that sets another Path has the key to itself.
    void KeyDown(int keyCode);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void Fill(const std::string& folder, const QStringList& below);
    void AddFolder(const QString& name, const std::string& folder, int depth, bool open);
    void Go(const QListWidgetItem* line);

    std::string m_path;
};
