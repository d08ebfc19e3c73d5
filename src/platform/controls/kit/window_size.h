// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes that depend on the font in use, so that large fonts get large windows.
#pragma once

#include <QFontMetrics>
#include <QScreen>
#include <QSize>
#include <QWidget>

// Returns a size for the window, in pixels, with space for a text of that many characters and lines: at least
// what its controls need, at most nine tenths of the screen.
inline QSize SizeForText(const QWidget& window, int characters, int lines) {
    const QFontMetrics metrics = window.fontMetrics();
    const QSize room(metrics.averageCharWidth() * characters, metrics.lineSpacing() * lines);
    return window.sizeHint().expandedTo(room).boundedTo(window.screen()->availableSize() * 9 / 10);
}
