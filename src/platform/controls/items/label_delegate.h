// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the items of a list and edits their texts in place.
#pragma once

#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

class QLineEdit;

class LabelDelegate : public QStyledItemDelegate {
    Q_OBJECT
 public:
    // A large picture with two lines of text below it, a small picture with one line beside it, or a row of
    // cells.
    enum class Shape { Large, Small, Row };
    static constexpr int LargePicture = 48, SmallPicture = 16;  // pixels at scale 1

    using QStyledItemDelegate::QStyledItemDelegate;

    void SetShape(Shape shape) { m_shape = shape; }
    bool Editing() const { return !m_editor.isNull(); }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

 signals:
    // The editor is closed and its text is final. The item has not been changed yet.
    void Edited(const QPersistentModelIndex& item, const QString& text);

 protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    enum class Typed { Taken, Dropped };
    void Finish(QLineEdit& editor, Typed typed);
    bool TextFits(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    Shape m_shape = Shape::Large;
    // One item at a time is edited. Mutable, because Qt's functions that open the editor are const.
    mutable QPointer<QWidget> m_editor;
    mutable QPersistentModelIndex m_edited;
};
