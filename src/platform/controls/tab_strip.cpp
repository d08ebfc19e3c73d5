// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/tab_strip.h"

#include <QShortcut>
#include <QSignalBlocker>

#include "platform/controls/kit/collections.h"

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setExpanding(false);
    connect(this, &QTabBar::currentChanged, this, &TabStrip::Click);
    const auto turn = [this](int keys, int by) {
        const auto* shortcut = new QShortcut(QKeySequence(keys), this);
        connect(shortcut, &QShortcut::activated, this, [this, by] { Turn(by); });
    };
    // Some keyboards send Shift+Tab as a key of its own, with or without Shift.
    turn(int(Qt::CTRL) | int(Qt::Key_Tab), 1);
    turn(int(Qt::CTRL) | int(Qt::SHIFT) | int(Qt::Key_Tab), -1);
    turn(int(Qt::CTRL) | int(Qt::SHIFT) | int(Qt::Key_Backtab), -1);
}

void TabStrip::Add(const std::string& caption) {
    const QSignalBlocker silent(this);
    addTab(QString::fromStdString(caption));
}

void TabStrip::SelectedItem(int index) {
    setCurrentIndex(static_cast<int>(PlaceOf(index, static_cast<std::size_t>(count()))));
}

void TabStrip::Turn(int by) {
    if (count() > 0) {
        setCurrentIndex((currentIndex() + by + count()) % count());
    }
}
