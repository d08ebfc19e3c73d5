// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/child_area.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QMenu>
#include <QStyle>
#include <algorithm>

namespace {

constexpr const char* OwnSizeProperty = "ownSize";

// Corners of windows, one after another, of which none covers the title of one before: down the diagonal,
// then down the diagonals beside it, and when the room is used up on along the first one, out of the frame.
class Corners {
 public:
    Corners(QSize room, int step)
        : m_step(step),
          m_across(std::max(0, room.width()) / step),
          m_down(std::max(0, room.height()) / step) {}

    QPoint Next() {
        const int furthest = std::max(m_across, m_down);
        for (; m_diagonal <= 2 * furthest; ++m_diagonal, m_along = 0) {
            const QPoint place = Place();
            if (place.x() <= m_across && place.y() <= m_down) {
                ++m_along;
                return place * m_step;
            }
        }
        return QPoint(1, 1) * (std::min(m_across, m_down) + ++m_along) * m_step;
    }

 private:
    // The diagonals are below and to the right of the first one, in turn.
    QPoint Place() const {
        const int off = (m_diagonal + 1) / 2;
        return m_diagonal % 2 == 1 ? QPoint(m_along, m_along + off) : QPoint(m_along + off, m_along);
    }
    int m_step, m_across, m_down;
    int m_diagonal = 0, m_along = 0;
};

int TitleHeight(const QMdiSubWindow& window) {
    return std::max(1, window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window));
}

}  // namespace

ChildArea::ChildArea(QWidget* parent) : QMdiArea(parent) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setActivationOrder(ActivationHistoryOrder);
}

QMdiSubWindow& ChildArea::Add(QWidget& form) {
    QMdiSubWindow* window = addSubWindow(&form);
    window->setAttribute(Qt::WA_DeleteOnClose);
    // The entry that closes it has the desktop's keys, which are one of the two only.
    const QList<QKeySequence> desktops = QKeySequence::keyBindings(QKeySequence::Close);
    for (QAction* entry : window->systemMenu()->actions()) {
        if (!desktops.isEmpty() && entry->shortcuts() == desktops) {
            entry->setShortcuts(CloseKeys());
        }
    }
    return *window;
}

QList<QKeySequence> ChildArea::CloseKeys() {
    return {Qt::CTRL | Qt::Key_W, Qt::CTRL | Qt::Key_F4};
}

QMdiSubWindow* ChildArea::ChildOf(const QWidget& form) {
    return qobject_cast<QMdiSubWindow*>(form.parentWidget());
}

ChildArea* ChildArea::Of(const QWidget& form) {
    const QMdiSubWindow* window = ChildOf(form);
    return window != nullptr ? qobject_cast<ChildArea*>(window->mdiArea()) : nullptr;
}

QWidget& ChildArea::WindowOf(QWidget& form) {
    QMdiSubWindow* window = ChildOf(form);
    return window != nullptr ? *window : form;
}

QSize ChildArea::FreeSize(const QMdiSubWindow& window) const {
    return viewport()->size() - window.size();
}

bool ChildArea::IsFree(QPoint corner, const QMdiSubWindow& window) const {
    const int step = TitleHeight(window);
    const QList<QMdiSubWindow*> windows = subWindowList();
    return std::none_of(windows.begin(), windows.end(), [&](const QMdiSubWindow* other) {
        const QPoint apart = other->pos() - corner;
        return other != &window && other->isVisible() && !other->isMinimized() && !other->isMaximized() &&
               std::max(std::abs(apart.x()), std::abs(apart.y())) < step;
    });
}

void ChildArea::GiveSize(QWidget& form, QSize size) {
    QWidget& window = WindowOf(form);
    window.resize(size);
    window.setProperty(OwnSizeProperty, size);
}

QSize ChildArea::OwnSize(const QMdiSubWindow& window) {
    const QVariant own = window.property(OwnSizeProperty);
    return own.isValid() ? own.toSize() : window.size();
}

void ChildArea::PlaceFree(QWidget& form) {
    QMdiSubWindow* window = ChildOf(form);
    const ChildArea* area = Of(form);
    if (area == nullptr || window->isMaximized()) {
        return;
    }
    Corners corners(area->FreeSize(*window), TitleHeight(*window));
    QPoint corner = corners.Next();
    while (!area->IsFree(corner, *window)) {
        corner = corners.Next();
    }
    window->move(corner);
}

void ChildArea::PlaceAtTop(QWidget& form) {
    QMdiSubWindow* window = ChildOf(form);
    const ChildArea* area = Of(form);
    if (area == nullptr || window->isMaximized()) {
        return;
    }
    const int step = TitleHeight(*window);
    int x = 0;
    while (!area->IsFree({x, 0}, *window) && x + step <= area->FreeSize(*window).width()) {
        x += step;
    }
    window->move(x, 0);
}

void ChildArea::Activate(QWidget& form) {
    QMdiSubWindow* window = ChildOf(form);
    if (window == nullptr) {
        form.raise();
        form.activateWindow();
        return;
    }
    if (window->isMinimized()) {
        window->showNormal();
    }
    if (window->mdiArea() != nullptr) {
        window->mdiArea()->setActiveSubWindow(window);
    }
}

void ChildArea::Cascade() {
    QMdiSubWindow* const active = activeSubWindow();
    int number = 0;
    for (QMdiSubWindow* window : subWindowList(StackingOrder)) {
        if (!window->isVisible() || window->isMinimized()) {
            continue;
        }
        if (window->isMaximized()) {
            window->showNormal();
        }
        window->resize(OwnSize(*window).boundedTo(viewport()->size()));
        Corners corners(FreeSize(*window), TitleHeight(*window));
        QPoint corner = corners.Next();
        for (int before = 0; before < number; ++before) {
            corner = corners.Next();
        }
        window->move(corner);
        ++number;
    }
    setActiveSubWindow(active);
}

void ChildArea::ArrangeIcons() {
    int left = 0;
    for (QMdiSubWindow* window : subWindowList()) {
        if (window->isMinimized()) {
            window->move(left, viewport()->height() - window->height());
            left += window->width();
        }
    }
}
