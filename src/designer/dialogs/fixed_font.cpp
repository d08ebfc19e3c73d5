// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/fixed_font.h"

#include <QFontDatabase>
#include <QStringList>

namespace designer {

QFont FixedFont() {
    QFont font;
    font.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    return font;
}

}  // namespace designer
