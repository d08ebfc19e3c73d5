// Sizes that follow the font in use, so that large fonts get large windows.
#pragma once

#include <QFontMetrics>
#include <QScreen>
#include <QSize>
#include <QWidget>

// A size for the window with room for so many letters and lines of text: no less than its controls need, no
// more than the screen has.
inline QSize RoomFor(const QWidget& window, int letters, int lines) {
    const QFontMetrics metrics = window.fontMetrics();
    const QSize room(metrics.averageCharWidth() * letters, metrics.lineSpacing() * lines);
    return window.sizeHint().expandedTo(room).boundedTo(window.screen()->availableSize() * 9 / 10);
}
