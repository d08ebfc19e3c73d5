// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/folders/file_list_box.h"

#include <QDir>
#include <QKeyEvent>
#include <QMimeData>
#include <QStyle>
#include <QUrl>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/controls/folders/folder_names.h"

FileListBox::FileListBox(QWidget* parent) : ListBox(parent) {
    setDragEnabled(true);
    const int picture = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({picture, picture});
    try {
        Path(".");
    } catch (const RuntimeError&) {
        m_path.clear();  // the current folder is missing: an empty list until another is set
    }
}

void FileListBox::Path(const std::string& path) {
    if (path.empty()) {
        return;
    }
    const std::filesystem::path folder = FolderAt(path);
    const QStringList names = NamesIn(folder, FolderContent::Files);
    m_path = paths::FromMachine(folder);
    Fill(names);
}

void FileListBox::Pattern(const std::string& pattern) {
    m_pattern = pattern;
    Path(m_path);
}

void FileListBox::Fill(const QStringList& names) {
    const QStringList patterns = QString::fromStdString(m_pattern).split(';', Qt::SkipEmptyParts);
    const QIcon picture = style()->standardIcon(QStyle::SP_FileIcon, nullptr, this);
    Clear();
    for (const QString& name : names) {
        if (QDir::match(patterns, name)) {
            addItem(new QListWidgetItem(picture, name));
        }
    }
}

void FileListBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && ListIndex() >= 0) {
        emit DblClick();
    } else {
        ListBox::keyPressEvent(event);
    }
}

QMimeData* FileListBox::mimeData(const QList<QListWidgetItem*>& items) const {
    QList<QUrl> files;
    for (const QListWidgetItem* line : items) {
        const std::filesystem::path file = paths::ToMachine(m_path + "\\" + line->text().toStdString());
        files << QUrl::fromLocalFile(QString::fromStdString(file.string()));
    }
    auto* dragged = new QMimeData;
    dragged->setUrls(files);
    return dragged;
}
