// SPDX-License-Identifier: GPL-3.0-or-later
// The child windows of a frame and their positions: no new window covers the title bar of another, and the
// whole window is visible if the frame has the space. When a window closes, the one used before it comes to
// the front.
#pragma once

#include <QKeySequence>
#include <QMdiArea>

class QMdiSubWindow;

class ChildArea : public QMdiArea {
    Q_OBJECT
 public:
    explicit ChildArea(QWidget* parent = nullptr);

    // Wraps a form in a child window and does not show it yet. The child window owns the form and is
    // destroyed when it is closed.
    QMdiSubWindow& Add(QWidget& form);
    // Returns the keys that close a child window: Ctrl+F4 and Ctrl+W on every desktop.
    static QList<QKeySequence> CloseKeys();
    static ChildArea* Of(const QWidget& form);  // null if the form is not in a child window
    // Returns the child window that holds the form, with its title bar and borders. Returns the form itself
    // if there is none.
    static QWidget& WindowOf(QWidget& form);

    // Gives the form's window its size, in pixels, and keeps that as its own.
    static void GiveSize(QWidget& form, QSize size);
    // Move the form's window, which has its size already. A form that is no child window, and a maximised
    // one, stay where they are.
    static void PlaceFree(QWidget& form);
    static void PlaceAtTop(QWidget& form);  // next to the title bars of other windows, if there is space
    // Brings the form's window to the front and restores it if it is minimised.
    static void Activate(QWidget& form);

    // One title bar below and beside the one before, the topmost last. The windows have their own sizes again
    // as far as the frame has the room; icons stay.
    void Cascade();
    // Lines up the minimised windows along the bottom edge.
    void ArrangeIcons();

 private:
    static QMdiSubWindow* ChildOf(const QWidget& form);  // null if there is none
    QSize FreeSize(const QMdiSubWindow& window) const;
    static QSize OwnSize(const QMdiSubWindow& window);  // the present one when none was given
    bool IsFree(QPoint corner, const QMdiSubWindow& window) const;
};
