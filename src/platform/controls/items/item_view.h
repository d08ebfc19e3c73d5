// SPDX-License-Identifier: GPL-3.0-or-later
// Mouse and key handling that all lists and trees of the forms share, whichever view of Qt shows the items.
// At most one item is selected, and only the user or code changes the selection.
#pragma once

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPersistentModelIndex>
#include <QPointer>

#include "platform/controls/items/item_events.h"
#include "platform/controls/kit/focus_look.h"
#include "platform/controls/kit/key_codes.h"

template <typename View>
class ItemView : public View {
 public:
    ItemView(ItemEvents& events, QWidget* parent) : View(parent), m_events(events) {
        this->setSelectionMode(QAbstractItemView::SingleSelection);
        this->setDragEnabled(false);
        ShowFocusAsLine(*this);
        // Context menus of items come with MouseUp. Qt's own would reach the frame below the view.
        this->setContextMenuPolicy(Qt::PreventContextMenu);
        QObject::connect(this, &QAbstractItemView::doubleClicked, this, [this] { m_doubled = true; });
    }

    // Returns an invalid index if no item is selected.
    QModelIndex SelectedIndex() const {
        if (this->selectionModel() == nullptr) {
            return {};
        }
        const QModelIndexList selected = this->selectionModel()->selectedIndexes();
        return selected.isEmpty() ? QModelIndex() : selected.first().siblingAtColumn(0);
    }

 protected:
    // If on, a click outside all items clears the selection.
    void ClickBesideDeselects(bool on) { m_besideDeselects = on; }
    // Marks the current press as one that opens or closes a branch, so that it is not a click.
    void PressToggledBranch() { m_toggled = true; }

    void mousePressEvent(QMouseEvent* event) override {
        m_pressed = this->indexAt(event->pos());
        m_toggled = false;
        if (!m_pressed.isValid() && m_besideDeselects) {
            this->clearSelection();
            m_events.ClickedBeside();
        }
        View::mousePressEvent(event);
    }

    // The selection does not follow a pressed button, and nothing is dragged.
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() == Qt::NoButton) {
            View::mouseMoveEvent(event);
        }
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        const QPoint place = event->pos();
        const QPointer<QWidget> alive(this);
        View::mouseReleaseEvent(event);
        const bool click = event->button() == Qt::LeftButton && m_pressed.isValid() && !m_toggled &&
                           SelectedIndex() == m_pressed.sibling(m_pressed.row(), 0) &&
                           this->indexAt(place).siblingAtColumn(0) == SelectedIndex();
        m_pressed = QModelIndex();
        if (click) {
            m_events.ItemClicked();
        }
        if (alive) {
            m_events.ButtonReleased(MouseButtonNumber(event->button()), place);
        }
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        m_doubled = false;
        View::mouseDoubleClickEvent(event);
        if (m_doubled && event->button() == Qt::LeftButton) {
            m_pressed = QModelIndex();
            m_events.ItemActivated();
        }
    }

    void contextMenuEvent(QContextMenuEvent* event) override { event->accept(); }

    void keyPressEvent(QKeyEvent* event) override {
        const QPointer<QWidget> alive(this);
        m_events.KeyPressed(KeyCode(*event));
        if (!alive) {
            return;
        }
        const QPersistentModelIndex before = SelectedIndex();
        if (!HandlesKey(*event)) {
            View::keyPressEvent(event);
            if (alive && SelectedIndex().isValid() && SelectedIndex() != before) {
                m_events.ItemClicked();
            }
        }
    }

    // A click with Ctrl also selects: it does not deselect the only selected item. Qt's views would clear the
    // selection when the user presses outside all items.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override {
        if (!index.isValid() && !m_besideDeselects) {
            return QItemSelectionModel::NoUpdate;
        }
        const QItemSelectionModel::SelectionFlags command = View::selectionCommand(index, event);
        if ((command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle)) != 0) {
            return QItemSelectionModel::ClearAndSelect |
                   (command & (QItemSelectionModel::Rows | QItemSelectionModel::Columns));
        }
        return command;
    }

 private:
    // Handles the keys that mean the same in every view.
    bool HandlesKey(QKeyEvent& event) {
        const QModelIndex selected = SelectedIndex();
        switch (event.key()) {
            case Qt::Key_F2:
                m_events.EditAsked();
                return true;
            case Qt::Key_Return:
            case Qt::Key_Enter:
                if (selected.isValid()) {
                    m_events.ItemActivated();
                }
                return selected.isValid();
            case Qt::Key_F10:
            case Qt::Key_Menu:
                if (event.key() == Qt::Key_F10 && event.modifiers() != Qt::ShiftModifier) {
                    return false;
                }
                if (selected.isValid()) {
                    this->scrollTo(selected);
                    m_events.ButtonReleased(MouseButtonNumber(Qt::RightButton),
                                            this->visualRect(selected).center());
                }
                return true;
            default:
                return false;
        }
    }

    ItemEvents& m_events;
    QPersistentModelIndex m_pressed;
    bool m_besideDeselects = false, m_toggled = false, m_doubled = false;
};
