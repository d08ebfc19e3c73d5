// The child windows of a frame, and who gives them their places: no new window covers the title of another,
// and all of it is seen where the frame has the room. When a window is closed the one that was used before it
// comes to the front.
#pragma once

#include <QKeySequence>
#include <QMdiArea>

class QMdiSubWindow;

class ChildArea : public QMdiArea {
    Q_OBJECT
 public:
    explicit ChildArea(QWidget* parent = nullptr);

    // Makes a form a child window, not on the screen yet. It is destroyed when it is closed.
    QMdiSubWindow& Add(QWidget& form);
    // The keys that close a child window, Ctrl+F4 and Ctrl+W on every desktop.
    static QList<QKeySequence> CloseKeys();
    static ChildArea* Of(const QWidget& form);  // null: the form is no child window of one
    // The child window that the form stands in, with its title bar and borders; the form itself where there
    // is none.
    static QWidget& WindowOf(QWidget& form);

    // Gives the form's window its size, in pixels, and keeps that as its own.
    static void GiveSize(QWidget& form, QSize size);
    // Move the form's window, which has its size already. A form that is no child window, and a maximised
    // one, stay where they are.
    static void PlaceFree(QWidget& form);
    static void PlaceAtTop(QWidget& form);  // beside the titles of others where there is room
    // Bring the form's window before the others, out of its icon if it is one.
    static void Activate(QWidget& form);

    // One title bar below and beside the one before, the topmost last. The windows have their own sizes again
    // as far as the frame has the room; icons stay.
    void Cascade();
    // Lines the minimised windows up along the bottom edge.
    void ArrangeIcons();

 private:
    static QMdiSubWindow* ChildOf(const QWidget& form);  // null: none
    QSize Room(const QMdiSubWindow& window) const;
    static QSize OwnSize(const QMdiSubWindow& window);  // the present one when none was given
    bool IsFree(QPoint corner, const QMdiSubWindow& window) const;
};
