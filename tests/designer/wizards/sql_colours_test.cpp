// SPDX-License-Identifier: GPL-3.0-or-later
// Statements in colours: each piece is written with the first character of its kind.
#include "designer/dialogs/sql_colours.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextLayout>
#include <map>

namespace designer {
namespace {

// A character for each one of the line: w(ord), t(ext), n(umber), c(omment), or a blank without colour.
std::string KindsOf(const QTextBlock& line) {
    std::map<QRgb, char> kinds;
    QPlainTextEdit key("select '' 1 --");
    SqlColours colours(key.document(), key.palette());
    colours.rehighlight();
    for (const QTextLayout::FormatRange& range : key.document()->firstBlock().layout()->formats()) {
        const char kind = range.start == 0 ? 'w' : range.start == 7 ? 't' : range.start == 10 ? 'n' : 'c';
        kinds[range.format.foreground().color().rgba()] = kind;
    }
    std::string shown(static_cast<std::size_t>(line.text().size()), ' ');
    for (const QTextLayout::FormatRange& range : line.layout()->formats()) {
        shown.replace(static_cast<std::size_t>(range.start), static_cast<std::size_t>(range.length),
                      static_cast<std::size_t>(range.length),
                      kinds[range.format.foreground().color().rgba()]);
    }
    return shown;
}

std::string Shown(const char* statement) {
    QPlainTextEdit edit(statement);
    SqlColours colours(edit.document(), edit.palette());
    colours.rehighlight();
    std::string all;
    for (QTextBlock line = edit.document()->firstBlock(); line.isValid(); line = line.next()) {
        all += (all.empty() ? "" : "\n") + KindsOf(line);
    }
    return all;
}

TEST(SqlColours, AreThoseOfWordsTextsNumbersAndComments) {
    EXPECT_EQ(Shown("Select a1, 'it''s' from t -- all"), "wwwwww     ttttttt wwww   cccccc");
    EXPECT_EQ(Shown("where x > 1.5 and \"from\" = `or`"), "wwwww     nnn www              ");
    EXPECT_EQ(Shown("selects fromage 2nd"), "                nnn");
}

TEST(SqlColours, ACommentGoesOnOverLines) {
    EXPECT_EQ(Shown("in /* one\nselect */ select\nselect"), "ww cccccc\nccccccccc wwwwww\nwwwwww");
    EXPECT_EQ(Shown("/* never ends\nselect"), "ccccccccccccc\ncccccc");
}

}  // namespace
}  // namespace designer
