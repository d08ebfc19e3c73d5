// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/placeholder_colour.h"

#include <QApplication>
#include <QPalette>
#include <cstdlib>

namespace designer {
namespace {

constexpr int LeastShare = 4;  // a hint has a quarter of the contrast of a text, or more

int ContrastOn(const QColor& base, const QColor& colour) {
    return std::abs(qGray(colour.rgb()) - qGray(base.rgb())) * colour.alpha() / 255;
}

}  // namespace

void MendPlaceholderColour() {
    const QPalette now = QApplication::palette();
    const QColor base = now.color(QPalette::Base), text = now.color(QPalette::Text);
    const QColor hint = now.color(QPalette::PlaceholderText);
    if (ContrastOn(base, hint) * LeastShare >= ContrastOn(base, text)) {
        return;
    }
    QColor faint = text;
    faint.setAlpha(text.alpha() / 2);
    QPalette mended = now;
    mended.setColor(QPalette::PlaceholderText, faint);
    QApplication::setPalette(mended);
}

}  // namespace designer
