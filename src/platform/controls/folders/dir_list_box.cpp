// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/folders/dir_list_box.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/controls/folders/folder_names.h"
#include "platform/controls/kit/key_codes.h"

namespace {

constexpr int DepthRole = Qt::UserRole;
constexpr int FolderRole = Qt::UserRole + 1;  // a path of the machine

// Indents a line by the depth of its folder.
class IndentedLine : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(Indent(option, index), 0);
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem moved = option;
        moved.rect.adjust(Indent(option, index), 0, 0, 0);
        QStyledItemDelegate::paint(painter, moved, index);
    }

 private:
    static int Indent(const QStyleOptionViewItem& option, const QModelIndex& index) {
        return index.data(DepthRole).toInt() * option.fontMetrics.height() * 2 / 3;
    }
};

bool GoesWithOthers(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta || key == Qt::Key_CapsLock || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace

DirListBox::DirListBox(QWidget* parent) : QListWidget(parent) {
    const int picture = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({picture, picture});
    setItemDelegate(new IndentedLine(this));
    connect(this, &QListWidget::itemDoubleClicked, this, &DirListBox::Go);
    try {
        Path(".");
    } catch (const RuntimeError&) {
        m_path.clear();  // the current folder is missing: an empty list until another is set
    }
}

void DirListBox::Path(const std::string& path) {
    if (path.empty()) {
        return;
    }
    const std::filesystem::path folder = FolderAt(path);
    Fill(folder.string(), NamesIn(folder, FolderContent::Folders));
    const std::string before = m_path;
    m_path = paths::FromMachine(folder);
    if (m_path != before) {
        emit Change();
    }
}

void DirListBox::Fill(const std::string& folder, const QStringList& below) {
    clear();
    std::filesystem::path known;
    int depth = 0;
    for (const std::filesystem::path& piece : std::filesystem::path(folder)) {
        known /= piece;
        AddFolder(QString::fromStdString(piece.string()), known.string(), depth++, Picture::Open);
    }
    const int own = count() - 1;
    for (const QString& name : below) {
        AddFolder(name, (known / name.toStdString()).string(), depth, Picture::Closed);
    }
    setCurrentRow(own);
    scrollToItem(item(own));
}

void DirListBox::AddFolder(const QString& name, const std::string& folder, int depth, Picture picture) {
    const auto icon = picture == Picture::Open ? QStyle::SP_DirOpenIcon : QStyle::SP_DirClosedIcon;
    auto* line = new QListWidgetItem(style()->standardIcon(icon, nullptr, this), name, this);
    line->setData(DepthRole, depth);
    line->setData(FolderRole, QString::fromStdString(folder));
}

// A listed folder may be gone or unreadable by now, which must not end the program.
void DirListBox::Go(const QListWidgetItem* line) {
    try {
        Path(paths::FromMachine(line->data(FolderRole).toString().toStdString()));
    } catch (const RuntimeError&) {
        QApplication::beep();
    }
}

void DirListBox::keyPressEvent(QKeyEvent* event) {
    const std::string before = m_path;
    if (!GoesWithOthers(event->key())) {
        emit KeyDown(KeyCode(*event));
    }
    if (m_path != before) {
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && currentItem() != nullptr) {
        Go(currentItem());
    } else {
        QListWidget::keyPressEvent(event);
    }
}
